#import <Cocoa/Cocoa.h>
#include <dispatch/dispatch.h>
#include <gtest/gtest.h>

#include <string>

#include "BareWindow.h"
#include "WindowScript.h"

// First of these, as the others start threads.
TEST(Dispatch, FoundationHasItsLocksBeforeTheFirstThread) {
  EXPECT_TRUE([NSThread isMultiThreaded]);
}

TEST(Dispatch, AModalLoopDeliversMainBlocks) {
  const window_test::BareWindow panel(NSMakeSize(200, 100));
  dispatch_block_t stop = ^{
      EXPECT_TRUE([NSThread isMainThread]);
      [NSApp stopModal];
  };
  dispatch_async(dispatch_get_main_queue(), stop);
  [NSApp runModalForWindow:panel.Window()];
  dispatch_async(dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_DEFAULT, 0), ^{
      EXPECT_FALSE([NSThread isMainThread]);
      dispatch_async(dispatch_get_main_queue(), stop);
  });
  [NSApp runModalForWindow:panel.Window()];
}

// What one block raises must not keep the later ones from running.
TEST(Dispatch, ARaisingBlockDoesNotBlockTheQueue) {
  __block std::string order;
  dispatch_async(dispatch_get_main_queue(), ^{
      order += "raise ";
      [NSException raise:NSGenericException format:@"raised by a test's block"];
  });
  dispatch_async(dispatch_get_main_queue(), ^{
      order += "next ";
  });
  EXPECT_EQ(order, "") << "queueing returns before the block runs";
  std::string *const seen = &order;
  EXPECT_TRUE(window_test::SpinUntil([seen] { return *seen == "raise next "; })) << order;
}
