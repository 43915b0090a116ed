#include "MainThread.h"

#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "WindowScript.h"

@interface TickCounter : NSObject {
 @public
  int ticks;
}
@end

@implementation TickCounter
- (void)tick {
  ++ticks;
}
@end

// Modal windows and menus have modes of their own.
TEST(MainThread, WorkAndTimersGoOnInEveryModeOfTheLoop) {
  for (NSString *mode in @[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ]) {
    TickCounter *counter = [[[TickCounter alloc] init] autorelease];
    NSTimer *timer = RepeatOnMainThread(0.01, counter, @selector(tick));
    std::atomic<bool> returned(false);
    std::thread background([&returned] {
      @autoreleasepool {
        RunOnMainThreadAndWait([] { EXPECT_TRUE([NSThread isMainThread]); });
      }
      returned = true;
    });
    NSDate *deadline = [NSDate dateWithTimeIntervalSinceNow:10];
    while ((!returned || counter->ticks < 2) && [deadline timeIntervalSinceNow] > 0) {
      [[NSRunLoop currentRunLoop] runMode:mode beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.05]];
    }
    EXPECT_TRUE(returned) << [mode UTF8String];
    EXPECT_GE(counter->ticks, 2) << [mode UTF8String];
    [timer invalidate];
    window_test::SpinUntil([&returned] { return returned.load(); });
    background.join();
  }
}
