#include "ExportFailure.h"

#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>

#import "Controls.h"
#import "DialogWindow.h"
#include "ExportState.h"
#include "WindowScript.h"
#include "WorkflowState.h"

using namespace window_test;

namespace {

int cleanups = 0;
bool cleanup_was_on_main_thread = false;

// An open export with a clean-up hook that counts.
class ExportFailure : public testing::Test {
 protected:
  void SetUp() override {
    cleanups = 0;
    g_pCleanupFunc = [] {
      ++cleanups;
      cleanup_was_on_main_thread = [NSThread isMainThread];
    };
    g_export = {ExportState::Activity::kUpload, true, false, ""};
    testing::internal::CaptureStderr();
  }

  void TearDown() override { g_export = ExportState(); }

  // The diagnostic lines so far.
  static std::string Log() { return testing::internal::GetCapturedStderr(); }

  // Runs a window of that class modally; the export fails meanwhile. Returns whether the window was on the screen after
  // that. Ends the modal loop if the failure has not.
  static bool StaysAfterAFailure(Class type) {
    NSWindow *window = [[[type alloc] initWithContentRect:NSMakeRect(100, 100, 200, 100)
                                                styleMask:NSTitledWindowMask
                                                  backing:NSBackingStoreBuffered
                                                    defer:NO] autorelease];
    [window setReleasedWhenClosed:NO];
    bool stays = false;
    RunWithScript(
        [window] {
          [window makeKeyAndOrderFront:nil];
          [NSApp runModalForWindow:window];
        },
        [window, &stays](Script &actions) {
          actions.WaitFor("the modal window", [window] { return IsModal(window); });
          actions.OnMain([] { FailExport("in an action"); });
          actions.OnMain([window, &stays] {
            stays = [window isVisible];
            if (stays) [NSApp stopModal];
          });
        });
    [window orderOut:nil];
    return stays;
  }
};

}  // namespace

TEST_F(ExportFailure, CleansUpOnceForAnExport) {
  FailExport("first");
  EXPECT_NE(Log().find("#orvanevorrel export failed: first\n"), std::string::npos);
  EXPECT_FALSE(g_export.open);
  EXPECT_TRUE(g_export.failed);
  EXPECT_EQ(g_export.activity, ExportState::Activity::kNone);
  testing::internal::CaptureStderr();
  FailExport("second");
  Log();
  EXPECT_EQ(cleanups, 1);
}

TEST_F(ExportFailure, SurvivesAFailingCleanup) {
  g_pCleanupFunc = [] { throw std::runtime_error("not even that"); };
  FailExport("first");
  EXPECT_NE(Log().find("#orvanevorrel ending the export failed: not even that\n"), std::string::npos);
}

TEST_F(ExportFailure, CleansUpOnTheMainThreadForABackgroundFailure) {
  std::atomic<bool> done(false);
  std::thread background([&done] {
    @autoreleasepool {
      FailExport("in the background");
    }
    done = true;
  });
  SpinUntil([&done] { return done.load(); });
  background.join();
  Log();
  EXPECT_EQ(cleanups, 1);
  EXPECT_TRUE(cleanup_was_on_main_thread);
}

TEST_F(ExportFailure, EndsADialogOfThePluginAndLeavesTheHostsAlone) {
  EXPECT_FALSE(StaysAfterAFailure([DialogWindow class]));
  EXPECT_EQ(cleanups, 1);
  EXPECT_TRUE(StaysAfterAFailure([NSWindow class]));
  Log();
}
