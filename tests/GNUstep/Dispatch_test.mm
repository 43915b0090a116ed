#import <Cocoa/Cocoa.h>
#include <dispatch/dispatch.h>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>

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

TEST_F(Dispatch, MainBlocksRunInOrderOnTheMainThreadAndNotAtOnce) {
  std::atomic<bool> *on_main = new std::atomic<bool>(true);
  for (int i = 0; i < 5; ++i) {
    OnMainQueue(^{
        order += std::to_string(i);
        if (![NSThread isMainThread]) *on_main = false;
    });
  }
  EXPECT_EQ(order, "") << "queueing returns before the block runs";
  EXPECT_TRUE(SpinUntil([] { return order.size() == 5; }));
  EXPECT_EQ(order, "01234");
  EXPECT_TRUE(*on_main);
  delete on_main;
}

// Each waits for the other, which only blocks that run at the same time can do, on threads of their own.
TEST_F(Dispatch, BackgroundBlocksRunConcurrently) {
  static std::atomic<int> arrived;
  static std::atomic<int> met;
  arrived = met = 0;
  for (int i = 0; i < 2; ++i) {
    InBackground(^{
        if (![NSThread isMainThread]) ++arrived;
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (arrived < 2 && std::chrono::steady_clock::now() < deadline) std::this_thread::yield();
        if (arrived == 2) ++met;
    });
  }
  EXPECT_TRUE(SpinUntil([] { return met == 2; }));
}

TEST_F(Dispatch, AModalLoopDeliversMainBlocks) {
  const window_test::BareWindow panel(NSMakeSize(200, 100));
  for (bool from_main_thread : {true, false}) {
    order.clear();
    dispatch_block_t stop = ^{
        order += "stop ";
        [NSApp stopModal];
    };
    if (from_main_thread) {
      OnMainQueue(stop);
    } else {
      InBackground(^{
          OnMainQueue(stop);
      });
    }
    [NSApp runModalForWindow:panel.Window()];
    EXPECT_EQ(order, "stop ") << from_main_thread;
  }
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
        InBackground(^{
            OnMainQueue(^{
                order += "third ";
            });
        });
        // Several rounds of the modal loop, each a chance to run the blocks too early.
        for (int i = 0; i < 10; ++i) actions.OnMain([] {});
        actions.OnMain([] {
          EXPECT_EQ(order, "begin ");
          [NSApp stopModal];
        });
        actions.WaitFor("the other blocks", [] { return order.find("third") != std::string::npos; });
      });
  EXPECT_EQ(order, "begin end second third ");
}

TEST_F(Dispatch, ABlockHoldsWhatItCapturesUntilItHasRun) {
  std::weak_ptr<std::string> watch;
  {
    const auto captured = std::make_shared<std::string>("main background");
    watch = captured;
    OnMainQueue(^{
        order += captured->substr(0, 5);
    });
    InBackground(^{
        OnMainQueue(^{
            order += captured->substr(5);
        });
    });
  }
  EXPECT_FALSE(watch.expired());
  EXPECT_TRUE(SpinUntil([&watch] { return watch.expired(); }));
  EXPECT_EQ(order, "main background");
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
  OnMainQueue(^{
      order += "later ";
  });
  EXPECT_TRUE(SpinUntil([] { return order == "raise next later "; })) << order;
}

TEST_F(Dispatch, ManyBlocksFromManyThreadsAllArrive) {
  static int count;
  count = 0;
  for (int thread = 0; thread < 8; ++thread) {
    InBackground(^{
        for (int i = 0; i < 500; ++i)
          OnMainQueue(^{
              ++count;
          });
    });
  }
  EXPECT_TRUE(SpinUntil([] { return count == 4000; })) << count;
}
