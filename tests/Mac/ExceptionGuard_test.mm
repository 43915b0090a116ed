#include "ExceptionGuard.h"

#import <Cocoa/Cocoa.h>

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <thread>

#import "BareWindow.h"
#import "Controls.h"
#include "ExportLifetime.h"
#include "WindowScript.h"
#include "WorkflowState.h"

using namespace window_test;

namespace {

int cleanups = 0;
bool cleanup_was_on_main_thread = false;

class ExceptionGuard : public testing::Test {
 protected:
  void SetUp() override {
    cleanups = 0;
    g_pCleanupFunc = [] {
      ++cleanups;
      cleanup_was_on_main_thread = [NSThread isMainThread];
    };
    ExportLifetime::Open();
    failures_ = ExportLifetime::Failures();
    testing::internal::CaptureStderr();
  }

  void TearDown() override { ExportLifetime::Close(); }

  // The diagnostic lines so far.
  static std::string Log() { return testing::internal::GetCapturedStderr(); }

  unsigned NewFailures() const { return ExportLifetime::Failures() - failures_; }

  unsigned failures_;
};

// Counts how often it is destroyed: unwinding must not skip frames.
struct Counted {
  int &destroyed;
  ~Counted() { ++destroyed; }
};

}  // namespace

TEST_F(ExceptionGuard, LetsAGoodBodyThrough) {
  bool ran = false;
  EXPECT_TRUE(RunGuarded([&ran] { ran = true; }));
  EXPECT_TRUE(ran);
  EXPECT_EQ(Log(), "");
  EXPECT_EQ(cleanups + static_cast<int>(NewFailures()), 0);
}

TEST_F(ExceptionGuard, StopsEveryKindOfException) {
  int destroyed = 0;
  const std::pair<std::function<void()>, const char *> bodies[] = {
      {[&destroyed] {
         Counted counted{destroyed};
         throw std::runtime_error("the JSON is odd");
       },
       "the JSON is odd"},
      {[] { throw std::bad_alloc(); }, "std::bad_alloc"},
      {[] { throw 5; }, "an exception of unknown type"},
      {[] { [NSException raise:NSRangeException format:@"index %d", 7]; }, "index 7"},
  };
  for (const auto &[body, message] : bodies) {
    ExportLifetime::Open();
    EXPECT_FALSE(RunGuarded(body));
    EXPECT_EQ(Log(), std::string("[orvanevorrel: export failed: ") + message + "]\n");
    testing::internal::CaptureStderr();
  }
  Log();
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(cleanups, 4);
  EXPECT_EQ(NewFailures(), 4u);
}

TEST_F(ExceptionGuard, CleansUpOnceForAnExport) {
  RunGuarded([] { throw std::runtime_error("first"); });
  RunGuarded([] { throw std::runtime_error("second"); });
  Log();
  EXPECT_EQ(cleanups, 1);
  EXPECT_FALSE(ExportLifetime::IsOpen());
}

TEST_F(ExceptionGuard, SurvivesAFailingCleanup) {
  g_pCleanupFunc = [] { throw std::runtime_error("not even that"); };
  EXPECT_FALSE(RunGuarded([] { throw std::runtime_error("first"); }));
  EXPECT_NE(Log().find("[orvanevorrel: ending the export failed: not even that]"), std::string::npos);
}

TEST_F(ExceptionGuard, CleansUpOnTheMainThreadForABackgroundFailure) {
  bool returned = true;
  bool done = false;
  std::thread background([&returned, &done] {
    @autoreleasepool {
      returned = RunGuarded([] { throw std::runtime_error("in the background"); });
    }
    done = true;
  });
  SpinUntil([&done] { return done; });
  background.join();
  Log();
  EXPECT_FALSE(returned);
  EXPECT_EQ(cleanups, 1);
  EXPECT_TRUE(cleanup_was_on_main_thread);
}

TEST_F(ExceptionGuard, EndsTheRunningModalLoopAndHidesItsWindow) {
  const BareWindow bare(NSMakeSize(200, 100));
  NSWindow *const window = bare.Window();
  RunWithScript([window] { [NSApp runModalForWindow:window]; },
                [window](Script &actions) {
                  actions.WaitFor("the modal window", [window] { return IsModal(window); });
                  actions.OnMain([] { RunGuarded([] { throw std::runtime_error("in an action"); }); });
                });
  Log();
  EXPECT_FALSE([window isVisible]);
  EXPECT_EQ(cleanups, 1);
}
