#import "UploadStatusWindowController.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#import "Controls.h"
#include "ExportState.h"
#include "OrvaneUI.h"
#include "PluginResources.h"
#include "ScriptedApi.h"
#include "TemporaryFolder.h"
#include "WindowScript.h"
#include "WorkflowState.h"

using namespace window_test;

namespace {

int cleanups = 0;
std::string completed_link;
std::atomic<int> progress_calls(0);
UploadStatusWindowController *status_controller = nil;

// The progress window on a scripted service, with a file to upload.
class UploadStatusWindowControllerTest : public testing::Test {
 protected:
  void SetUp() override {
    UsePluginResources();
    WriteFile(file_, std::string(300000, 'x'));
    g_fpath = file_;
    g_prj = "1";
    g_fld = "11";
    g_title = "Title";
    g_desc = "";
    g_tags = {"b", "a"};
    cleanups = 0;
    completed_link = "none";
    progress_calls = 0;
    g_pCleanupFunc = [] { ++cleanups; };
    g_pCompleteFunc = [](std::string link) { completed_link = link; };
    g_pUpdFunc = [](double total, double now) {
      ++progress_calls;
      [status_controller updateProgressBarWithTotal:total now:now];
    };
    ASSERT_EQ(client_.login("acme", "editor", "secret"), "success");
    status_controller = [[UploadStatusWindowController alloc] initWithProjectsApiPointer:&client_];
  }

  void TearDown() override {
    [status_controller release];
    status_controller = nil;
  }

  static bool UploadHasEnded() { return g_export.activity != ExportState::Activity::kUpload; }

  ScriptedApi api_;
  OrvaneProjectsAPI client_;
  const TemporaryFolder folder_;
  const std::string file_ = folder_ / "VorrelExport_test.mp4";
};

}  // namespace

TEST_F(UploadStatusWindowControllerTest, UploadsDeletesTheFileAndHandsTheLinkOn) {
  [status_controller showWindow];
  EXPECT_TRUE([[status_controller uploadStatusWindow] isVisible]);
  EXPECT_EQ([[status_controller uploadStatusWindow] level], NSFloatingWindowLevel);
  [[status_controller uploadStatusWindow] performClose:nil];
  EXPECT_TRUE([[status_controller uploadStatusWindow] isVisible]) << "it cannot be closed meanwhile";
  ASSERT_TRUE(SpinUntil([] { return completed_link != "none"; }));
  EXPECT_EQ(completed_link, "https://acme.orvane.localhost/review/7");
  EXPECT_FALSE([[status_controller uploadStatusWindow] isVisible]);
  EXPECT_FALSE(std::filesystem::exists(file_));
  EXPECT_EQ(cleanups, 0);
  EXPECT_GT(progress_calls, 1);
  EXPECT_EQ(api_.RequestsFor(std::string(ScriptedApi::kUpload) + "1").size(), 1u);
}

// Each of these answers leaves the file and the window, and says what the service said.
TEST_F(UploadStatusWindowControllerTest, ARefusalLeavesFileAndWindow) {
  const std::pair<std::string, std::string> cases[] = {
      {ScriptedApi::Refusal("The folder is full."), "The folder is full."},
      {"<html>no JSON</html>", ""},
      {R"({"root":{"status":1,"message":5}})", "5"},
      {"\xff\xfe", ""},
  };
  for (const auto &[answer, message] : cases) {
    api_.Answer(std::string(ScriptedApi::kUpload) + "1", answer);
    std::string texts;
    RunWithScript(
        [] {
          [status_controller showWindow];
          SpinUntil([] { return UploadHasEnded() && !AlertPanel(); });
        },
        [&texts](Script &actions) { texts = DismissAlertWhenItComes(actions); });
    EXPECT_EQ(texts,
              "There was an error uploading to Orvane.\nThe system returned this message: \"" + message + "\"\n");
    EXPECT_TRUE([[status_controller uploadStatusWindow] isVisible]);
    EXPECT_TRUE(std::filesystem::exists(file_));
    // In words, to be copied, and below whatever the editor works in.
    EXPECT_EQ(std::string([[[status_controller uploadLabel] stringValue] UTF8String]),
              "The film was not uploaded. It is kept at\n" + file_);
    EXPECT_TRUE([[status_controller uploadLabel] isSelectable]);
    EXPECT_EQ([[status_controller uploadStatusWindow] level], NSNormalWindowLevel);
  }
  EXPECT_EQ(completed_link, "none");
  EXPECT_EQ(cleanups, 0);
  [[status_controller uploadStatusWindow] performClose:nil];
  EXPECT_FALSE([[status_controller uploadStatusWindow] isVisible]);
}

// As after a render that was cancelled.
TEST_F(UploadStatusWindowControllerTest, SaysThatThereIsNoFilm) {
  std::filesystem::remove(file_);
  RunWithScript(
      [] {
        [status_controller showWindow];
        SpinUntil([] { return UploadHasEnded() && !AlertPanel(); });
      },
      [](Script &actions) { DismissAlertWhenItComes(actions); });
  EXPECT_STREQ([[[status_controller uploadLabel] stringValue] UTF8String],
               "The film was not uploaded, as it was not rendered. Export the sequence again.");
}

// What the service says may be longer than any screen.
TEST_F(UploadStatusWindowControllerTest, CutsALongMessage) {
  std::string message;
  for (int i = 0; i < 300000; ++i) message += "é";
  api_.Answer(std::string(ScriptedApi::kUpload) + "1", ScriptedApi::Refusal(message));
  std::string texts;
  testing::internal::CaptureStderr();
  RunWithScript(
      [] {
        [status_controller showWindow];
        SpinUntil([] { return UploadHasEnded() && !AlertPanel(); });
      },
      [&texts](Script &actions) { texts = DismissAlertWhenItComes(actions); });
  EXPECT_LT(testing::internal::GetCapturedStderr().size(), 10000u);
  EXPECT_NE(texts.find("ééé...\"\n"), std::string::npos) << texts.size();
  EXPECT_LT(texts.size(), 2200u);
}

TEST_F(UploadStatusWindowControllerTest, ShowsTheNewestProgressFromAnyThread) {
  [status_controller updateProgressBarWithTotal:0 now:0];  // the size is not known yet
  EXPECT_EQ([[status_controller progressBar] maxValue], 100);
  [status_controller updateProgressBarWithTotal:200 now:50];
  EXPECT_EQ([[status_controller progressBar] maxValue], 200);
  EXPECT_EQ([[status_controller progressBar] doubleValue], 50);
  EXPECT_FALSE([[status_controller progressBar] isHidden]);
  EXPECT_FALSE([[status_controller progressBar] isIndeterminate]);

  // While an upload runs, what another thread says is shown soon.
  std::atomic<bool> answer(false);
  api_.Server().Route(std::string(ScriptedApi::kUpload) + "1", [&answer](const orvane_test::Request &) {
    while (!answer) std::this_thread::yield();
    return orvane_test::TextResponse(ScriptedApi::Refusal("no"));
  });
  g_pUpdFunc = [](double, double) {};
  RunWithScript(
      [] {
        [status_controller showWindow];
        SpinUntil([] { return UploadHasEnded() && !AlertPanel(); });
      },
      [&answer](Script &actions) {
        for (int i = 0; i <= 20000; ++i) [status_controller updateProgressBarWithTotal:45e6 now:45e6 * i / 20000];
        actions.WaitFor("the newest progress", [] { return [[status_controller progressBar] doubleValue] == 45e6; });
        actions.OnMain([] {
          EXPECT_STREQ([[[status_controller uploadLabel] stringValue] UTF8String],
                       "Uploading to Orvane: 45.0 MB of 45.0 MB (100 %)");
        });
        answer = true;
        DismissAlertWhenItComes(actions);
      });
}

// With nothing of a workflow around the facade, and nobody logged in.
TEST(UploadStatusWindowController, IsShownByTheFacadeOnItsOwn) {
  UsePluginResources();
  OrvaneUI facade;
  std::string texts;
  RunWithScript(
      [&facade] {
        facade.Upload();
        EXPECT_TRUE([WindowTitled(@"Orvane: Uploading") isVisible]);
        SpinUntil([] { return g_export.activity == ExportState::Activity::kNone; });
      },
      [&texts](Script &actions) { texts = DismissAlertWhenItComes(actions); });
  EXPECT_EQ(texts, "There was an error uploading to Orvane.\nThe system returned this message: \"\"\n");
}
