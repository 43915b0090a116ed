#include "Replacements.h"

#import <Cocoa/Cocoa.h>

#include <vector>

namespace {

// What waits for the application.
std::vector<std::function<void()>> &Waiting() {
  static std::vector<std::function<void()>> waiting;
  return waiting;
}

const Replacement json_reader(InstallJsonReader);

}  // namespace

Replacement::Replacement(const std::function<void()> &install) {
  if (NSApp) {
    install();
  } else {
    Waiting().push_back(install);
  }
}

@interface OrvReplacements : NSObject
@end

@implementation OrvReplacements

+ (void)load {
  @autoreleasepool {
    [[NSNotificationCenter defaultCenter] addObserver:self
                                             selector:@selector(install:)
                                                 name:NSApplicationWillFinishLaunchingNotification
                                               object:nil];
  }
}

+ (void)install:(NSNotification *)notification {
  [[NSNotificationCenter defaultCenter] removeObserver:self];
  for (const std::function<void()> &install : Waiting()) install();
}

@end
