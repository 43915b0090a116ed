#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "BareWindow.h"
#include "WindowScript.h"

using namespace window_test;

namespace {

// Long enough for the events that opening a window brings, each of which would end a loop that has been stopped.
constexpr std::chrono::milliseconds kUntilQuiet(500);

// Long enough for a loop that waits for an event in vain to be told from one that ends by itself.
constexpr int kPatience = 50;
constexpr std::chrono::milliseconds kStep(100);

}  // namespace

// Stopping what does not run neither raises nor ends the next session before its time, which another thread then ends
// at once.
TEST(ModalLoop, EndsAtOnceWhenItIsStoppedAndStoppingNothingDoesNothing) {
  const BareWindow window(NSMakeSize(200, 100));
  [NSApp stopModalWithCode:4711];
  NSInteger code = 0;
  std::atomic<bool> ended(false);
  RunWithScript(
      [&] {
        code = [NSApp runModalForWindow:window.Window()];
        ended = true;
      },
      [&ended](Script &actions) {
        std::this_thread::sleep_for(kUntilQuiet);
        [NSApp performSelectorOnMainThread:@selector(stopModal)
                                withObject:nil
                             waitUntilDone:NO
                                     modes:@[ NSModalPanelRunLoopMode ]];
        for (int i = 0; i < kPatience && !ended; ++i) std::this_thread::sleep_for(kStep);
        EXPECT_TRUE(ended) << "it waits for the next event";
        actions.OnMain([] {});  // which is what comes of this
      });
  EXPECT_EQ(code, NSRunStoppedResponse);
}
