#include "Replacements.h"

#import <Cocoa/Cocoa.h>

#include <vector>

namespace {

// What waits for the application.
std::vector<void (*)()> &Waiting() {
  static std::vector<void (*)()> waiting;
  return waiting;
}

const Replacement json_reader(InstallJsonReader);

}  // namespace

Replacement::Replacement(void (*install)()) {
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
  for (void (*install)() : Waiting()) install();
}

@end
