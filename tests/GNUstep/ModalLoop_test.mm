#import <Cocoa/Cocoa.h>
#import <WakeEventLoop.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "BareWindow.h"

namespace {

constexpr NSInteger kCode = 4711;

std::atomic<int> quiet_looks(0);

// Long enough for a loop that waits for an event that never comes to be told from one that ends by itself.
constexpr std::chrono::seconds kRescue(5);

}  // namespace

@interface ModalLoopStopper : NSObject
+ (void)stopWithCode;
+ (void)wake;
+ (void)noteEvents;
@end

@implementation ModalLoopStopper

+ (void)stopWithCode {
  [NSApp stopModalWithCode:kCode];
}

// Counts how often in a row no event was waiting.
+ (void)noteEvents {
  NSEvent *event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                      untilDate:[NSDate distantPast]
                                         inMode:NSModalPanelRunLoopMode
                                        dequeue:NO];
  quiet_looks = event ? 0 : quiet_looks + 1;
}

+ (void)wake {
  WakeEventLoop();
}

@end

namespace {

// Has the main thread run the class method, as soon as it runs a modal loop. Any thread.
void PerformOnMainThread(SEL method, bool wait = false) {
  @autoreleasepool {
    [[ModalLoopStopper class] performSelectorOnMainThread:method
                                               withObject:nil
                                            waitUntilDone:wait
                                                    modes:@[ NSModalPanelRunLoopMode ]];
  }
}

// Waits until the modal loop has dealt with the events that opening its window brings: any event would end a loop that
// has been stopped.
void WaitForQuiet() {
  quiet_looks = 0;
  while (quiet_looks < 20) {
    PerformOnMainThread(@selector(noteEvents), true);
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
}

// Frees a modal loop that does not end by itself.
class Rescue {
 public:
  Rescue() : thread_([this] { Run(); }) {}

  ~Rescue() {
    ended_ = true;
    thread_.join();
  }

  bool WasNeeded() const { return needed_; }

 private:
  void Run() {
    const auto deadline = std::chrono::steady_clock::now() + kRescue;
    while (!ended_ && std::chrono::steady_clock::now() < deadline) {
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    while (!ended_) {
      needed_ = true;
      PerformOnMainThread(@selector(stopWithCode));
      PerformOnMainThread(@selector(wake));
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
  }

  std::atomic<bool> ended_{false};
  std::atomic<bool> needed_{false};
  std::thread thread_;
};

class ModalLoop : public testing::Test {
 protected:
  window_test::BareWindow window_{NSMakeSize(200, 100)};
};

}  // namespace

TEST_F(ModalLoop, APerformerEndsTheLoopAtOnce) {
  for (int round = 0; round < 3; ++round) {
    Rescue rescue;
    std::thread stopper([] {
      WaitForQuiet();
      PerformOnMainThread(@selector(stopWithCode));
    });
    EXPECT_EQ([NSApp runModalForWindow:window_.Window()], kCode);
    stopper.join();
    EXPECT_FALSE(rescue.WasNeeded());
    EXPECT_EQ([NSApp modalWindow], nil);
    [window_.Window() orderOut:nil];
  }
}

// Stopping what does not run neither raises nor ends the next session before its time.
TEST_F(ModalLoop, StoppingNothingDoesNothing) {
  ASSERT_EQ([NSApp modalWindow], nil);
  [NSApp stopModalWithCode:kCode + 1];
  [NSApp stopModal];
  Rescue rescue;
  std::thread stopper([] { PerformOnMainThread(@selector(stopWithCode)); });
  EXPECT_EQ([NSApp runModalForWindow:window_.Window()], kCode);
  stopper.join();
  EXPECT_FALSE(rescue.WasNeeded());
}
