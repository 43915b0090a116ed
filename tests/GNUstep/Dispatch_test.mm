#import <Cocoa/Cocoa.h>
#include <dispatch/dispatch.h>

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

#include "WindowScript.h"

using window_test::SpinUntil;

namespace {

// What the blocks of a test did, in order. Main thread.
std::string order;

std::atomic<int> live_objects(0);

}  // namespace

// Counts how many of its kind live.
@interface DispatchTestObject : NSObject
@end

@implementation DispatchTestObject

- (id)init {
  if ((self = [super init])) ++live_objects;
  return self;
}

- (void)dealloc {
  --live_objects;
  [super dealloc];
}

@end

namespace {

class Dispatch : public testing::Test {
 protected:
  void SetUp() override {
    order.clear();
    live_objects = 0;
    pool_ = [[NSAutoreleasePool alloc] init];
    panel_ = [[NSWindow alloc] initWithContentRect:NSMakeRect(100, 100, 200, 100)
                                         styleMask:NSTitledWindowMask
                                           backing:NSBackingStoreBuffered
                                             defer:NO];
    [panel_ setReleasedWhenClosed:NO];
  }

  void TearDown() override {
    [panel_ orderOut:nil];
    [panel_ release];
    [pool_ release];
  }

  // Runs a modal loop for the panel until somebody stops it.
  void RunModal() {
    [NSApp runModalForWindow:panel_];
    [panel_ orderOut:nil];
  }

  NSWindow *panel_ = nil;

 private:
  NSAutoreleasePool *pool_ = nil;
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

TEST_F(Dispatch, BackgroundBlocksRunElsewhereAndReachTheMainQueue) {
  __block std::thread::id background;
  InBackground(^{
      background = std::this_thread::get_id();
      OnMainQueue(^{
          order += "main";
      });
  });
  EXPECT_TRUE(SpinUntil([] { return order == "main"; }));
  EXPECT_NE(background, std::thread::id());
  EXPECT_NE(background, std::this_thread::get_id());
}

// Each waits for the other, which only blocks that run at the same time can do.
TEST_F(Dispatch, BackgroundBlocksRunConcurrently) {
  static std::atomic<int> arrived;
  static std::atomic<int> met;
  arrived = met = 0;
  for (int i = 0; i < 2; ++i) {
    InBackground(^{
        ++arrived;
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (arrived < 2 && std::chrono::steady_clock::now() < deadline) std::this_thread::yield();
        if (arrived == 2) ++met;
    });
  }
  EXPECT_TRUE(SpinUntil([] { return met == 2; }));
}

TEST_F(Dispatch, AModalLoopDeliversMainBlocks) {
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
    RunModal();
    EXPECT_EQ(order, "stop ") << from_main_thread;
  }
}

// The second block may not begin inside the modal loop that the first one runs.
TEST_F(Dispatch, ALaterMainBlockWaitsForTheModalLoopOfAnEarlierOne) {
  NSWindow *panel = panel_;
  window_test::RunWithScript(
      [panel] {
        OnMainQueue(^{
            order += "begin ";
            [NSApp runModalForWindow:panel];
            [panel orderOut:nil];
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

TEST_F(Dispatch, CapturedObjectsLiveAsLongAsTheirBlock) {
  @autoreleasepool {
    DispatchTestObject *object = [[DispatchTestObject alloc] init];
    OnMainQueue(^{
        order += [object isProxy] ? "" : "main ";
    });
    [object release];
    EXPECT_EQ(live_objects, 1);
    object = [[DispatchTestObject alloc] init];
    InBackground(^{
        DispatchTestObject *own = [[[DispatchTestObject alloc] init] autorelease];
        OnMainQueue(^{
            order += [object isEqual:own] ? "" : "background ";
        });
    });
    [object release];
  }
  EXPECT_TRUE(SpinUntil([] { return order.size() == strlen("main background "); }));
  EXPECT_TRUE(SpinUntil([] { return live_objects == 0; })) << live_objects << " objects are left";
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
