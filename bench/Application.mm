#include "Application.h"

#import <Cocoa/Cocoa.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "FailureOf.h"
#import "LinuxTheme.h"

@interface BenchApplicationDelegate : NSObject {
  const std::function<void()> *body;  // not owned: its owner waits
}
- (id)initWithBody:(const std::function<void()> *)aBody;
@end

@implementation BenchApplicationDelegate

- (id)initWithBody:(const std::function<void()> *)aBody {
  if ((self = [super init])) body = aBody;
  return self;
}

- (void)applicationDidFinishLaunching:(NSNotification *)notification {
  [self performSelector:@selector(run) withObject:nil afterDelay:0];
}

// With an in-window menu GNUstep would end the program with its last window.
- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication *)application {
  return NO;
}

- (void)run {
  const std::string failure = window_test::FailureOf(*body);
  if (!failure.empty()) fprintf(stderr, "benchmark: %s\n", failure.c_str());
  fflush(stdout);
  exit(failure.empty() ? 0 : 1);
}

@end

namespace bench {

namespace {

// A host's main loop sleeps until something happens. One that wakes often takes time from what is measured: about a
// millisecond each time.
constexpr double kSecondsBetweenQuestions = 0.1;

}  // namespace

void RunInApplication(const std::function<void()> &body) {
  @autoreleasepool {
    UseLinuxTheme();
    // The windows find their interface files through the bundle's identifier. Its code is not loaded.
    [[NSBundle alloc] initWithPath:@ORVANE_BUNDLE_PATH];
    [NSApplication sharedApplication];
    [NSApp setDelegate:static_cast<id>([[BenchApplicationDelegate alloc] initWithBody:&body])];
    [NSApp run];
  }
  exit(1);
}

void RunMainLoopUntil(const std::function<bool()> &condition, double seconds) {
  NSDate *deadline = [NSDate dateWithTimeIntervalSinceNow:seconds];
  while (!condition()) {
    if ([deadline timeIntervalSinceNow] < 0) throw std::runtime_error("waited in vain in the main loop");
    @autoreleasepool {
      NSEvent *event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                          untilDate:[NSDate dateWithTimeIntervalSinceNow:kSecondsBetweenQuestions]
                                             inMode:NSDefaultRunLoopMode
                                            dequeue:YES];
      if (event) [NSApp sendEvent:event];
    }
  }
}

}  // namespace bench
