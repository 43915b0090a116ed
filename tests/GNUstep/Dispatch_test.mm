#import <Cocoa/Cocoa.h>
#include <dispatch/dispatch.h>
#include <gtest/gtest.h>

#include <string>

#include "BareWindow.h"
#include "WindowScript.h"

using window_test::SpinUntil;

namespace {

// What the blocks of a test did, in order. Main thread.
std::string order;

class Dispatch : public testing::Test {
 protected:
  void SetUp() override { order.clear(); }
};

void OnMainQueue(dispatch_block_t block) {
  dispatch_async(dispatch_get_main_queue(), block);
}
void InBackground(dispatch_block_t block) {
  dispatch_async(dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_DEFAULT, 0), block);
}

}  // namespace

TEST_F(Dispatch, AModalLoopDeliversMainBlocks) {
  const window_test::BareWindow panel(NSMakeSize(200, 100));
  dispatch_block_t stop = ^{
      order += "stop ";
      [NSApp stopModal];
  };
  OnMainQueue(stop);
  [NSApp runModalForWindow:panel.Window()];
  InBackground(^{
      if (![NSThread isMainThread]) OnMainQueue(stop);
  });
  [NSApp runModalForWindow:panel.Window()];
  EXPECT_EQ(order, "stop stop ");
}

// The second block may not begin inside the modal loop that the first one runs.
TEST_F(Dispatch, ALaterMainBlockWaitsForTheModalLoopOfAnEarlierOne) {
  const window_test::BareWindow window(NSMakeSize(200, 100));
  NSWindow *const panel = window.Window();
  window_test::RunWithScript(
      [panel] {
        OnMainQueue(^{
            order += "begin ";
            [NSApp runModalForWindow:panel];
            order += "end ";
        });
        SpinUntil([] { return order.find("second") != std::string::npos; });
      },
      [panel](window_test::Script &actions) {
        actions.WaitFor("the modal loop", [panel] { return [NSApp modalWindow] == panel; });
        actions.OnMain([] {
          OnMainQueue(^{
              order += "second ";
          });
        });
        // Several rounds of the modal loop, each a chance to run the blocks too early.
        for (int i = 0; i < 10; ++i) actions.OnMain([] {});
        actions.OnMain([] {
          EXPECT_EQ(order, "begin ");
          [NSApp stopModal];
        });
      });
  EXPECT_EQ(order, "begin end second ");
}

// What one block raises must not keep the later ones from running.
TEST_F(Dispatch, ARaisingBlockDoesNotBlockTheQueue) {
  OnMainQueue(^{
      order += "raise ";
      [NSException raise:NSGenericException format:@"raised by a test's block"];
  });
  OnMainQueue(^{
      order += "next ";
  });
  EXPECT_TRUE(SpinUntil([] { return order == "raise next "; })) << order;
}
