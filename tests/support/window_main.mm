// The main function of window tests: GoogleTest inside a running application, with the look of the host.
#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

#include <cstdio>

#ifndef __APPLE__
#import "LinuxTheme.h"
#include "ViewThread.h"
#endif

@interface WindowTestRunner : NSObject {
  int result;
}
@end

@implementation WindowTestRunner

- (void)applicationDidFinishLaunching:(NSNotification *)notification {
  [self performSelector:@selector(runTests) withObject:nil afterDelay:0];
}

// With an in-window menu GNUstep would end the program with its last window.
- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication *)application {
  return NO;
}

- (void)runTests {
  result = RUN_ALL_TESTS();
  if (testing::UnitTest::GetInstance()->test_to_run_count() == 0) {
    fprintf(stderr, "no test was chosen\n");
    result = 1;
  }
  fflush(stdout);
  exit(result);
}

@end

int main(int argc, char **argv) {
  testing::InitGoogleTest(&argc, argv);
  @autoreleasepool {
#ifndef __APPLE__
    UseLinuxTheme();
#endif
    [NSApplication sharedApplication];
#ifndef __APPLE__
    ExpectViewsOnMainThread();
#endif
    [NSApp setDelegate:static_cast<id>([[WindowTestRunner alloc] init])];
    [NSApp run];
  }
  return 0;
}
