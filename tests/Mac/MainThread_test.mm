#include "MainThread.h"

#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#import "BareWindow.h"
#import "Controls.h"
#include "WindowScript.h"

using namespace window_test;

TEST(MainThread, RunsWorkWhileAModalWindowRuns) {
  const BareWindow window(NSMakeSize(200, 100));
  std::atomic<bool> returned(false);
  std::thread background;
  RunWithScript([&window] { [NSApp runModalForWindow:window.Window()]; },
                [&](Script &actions) {
                  actions.WaitFor("the modal window", [&window] { return IsModal(window.Window()); });
                  background = std::thread([&returned] {
                    @autoreleasepool {
                      RunOnMainThreadAndWait([] { EXPECT_TRUE([NSThread isMainThread]); });
                    }
                    returned = true;
                  });
                  actions.WaitFor("the work to return", [&returned] { return returned.load(); });
                  actions.OnMain([] { [NSApp stopModal]; });
                });
  SpinUntil([&returned] { return returned.load(); });
  background.join();
}
