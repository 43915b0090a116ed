#import <Cocoa/Cocoa.h>
#import <WakeEventLoop.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "BareWindow.h"

namespace {

constexpr NSInteger kCode = 4711;

// Long enough for the events that opening a window brings, each of which would end a loop that has been stopped.
constexpr std::chrono::milliseconds kUntilQuiet(500);

// Long enough for a loop that waits for an event in vain to be told from one that ends by itself.
constexpr int kPatience = 50;
constexpr std::chrono::milliseconds kStep(100);

}  // namespace

@interface ModalLoopStopper : NSObject
+ (void)stop;
+ (void)wake;
@end

@implementation ModalLoopStopper
+ (void)stop {
  [NSApp stopModalWithCode:kCode];
}
+ (void)wake {
  WakeEventLoop();
}
@end

// Any thread.
static void InModalLoop(SEL method) {
  @autoreleasepool {
    [[ModalLoopStopper class] performSelectorOnMainThread:method
                                               withObject:nil
                                            waitUntilDone:NO
                                                    modes:@[ NSModalPanelRunLoopMode ]];
  }
}

// Stopping what does not run neither raises nor ends the next session before its time, which another thread then ends
// at once.
TEST(ModalLoop, EndsAtOnceWhenItIsStoppedAndStoppingNothingDoesNothing) {
  const window_test::BareWindow window(NSMakeSize(200, 100));
  ASSERT_EQ([NSApp modalWindow], nil);
  [NSApp stopModalWithCode:kCode + 1];
  [NSApp stopModal];
  std::atomic<bool> ended(false);
  std::atomic<int> waits(0);
  std::thread stopper([&ended, &waits] {
    std::this_thread::sleep_for(kUntilQuiet);
    InModalLoop(@selector(stop));
    for (; !ended && waits < kPatience; ++waits) std::this_thread::sleep_for(kStep);
    if (!ended) InModalLoop(@selector(wake));
  });
  EXPECT_EQ([NSApp runModalForWindow:window.Window()], kCode);
  ended = true;
  stopper.join();
  EXPECT_LT(waits, kPatience) << "it ended with the next event only";
}
