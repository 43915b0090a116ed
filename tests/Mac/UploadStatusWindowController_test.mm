#import "UploadStatusWindowController.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#import "Controls.h"
#include "ExportState.h"
#include "PlatformString.h"
#include "PluginResources.h"
#include "ScriptedApi.h"
#include "TemporaryFolder.h"
#import "UploadCompleteWindowController.h"
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
    height_ = Height();
  }

  void TearDown() override {
    [status_controller release];
    status_controller = nil;
  }

  // Tries again when that is offered. Returns how tall the window is then, before the display tells of it.
  static CGFloat TryAgain(Script &actions) {
    NSButton *button = [status_controller tryAgainBtn];
    actions.WaitFor("another try", [button] { return ![button isHidden]; });
    CGFloat height = 0;
    actions.OnMain([button, &height] {
      SpinUntil([] {
        return ![NSApp nextEventMatchingMask:NSAnyEventMask untilDate:nil inMode:NSDefaultRunLoopMode dequeue:NO];
      });
      [status_controller tryAgain:button];
      height = Height();
      EXPECT_TRUE([button isHidden]);
      EXPECT_TRUE([[status_controller closeBtn] isHidden]);
      EXPECT_FALSE([[status_controller progressBar] isHidden]);
    });
    return height;
  }

  // Of its inside: what the window manager puts around it is known only when a window stands.
  static CGFloat Height() { return NSHeight([[[status_controller uploadStatusWindow] contentView] frame]); }

  static std::string Text(NSTextField *label) { return [[label stringValue] UTF8String]; }

  static bool UploadHasEnded() { return g_export.activity != ExportState::Activity::kUpload; }

  ScriptedApi api_;
  OrvaneProjectsAPI client_;
  CGFloat height_ = 0;
  const TemporaryFolder folder_;
  // Where it is takes more lines than the window has.
  const std::string file_ = folder_ / ("VorrelExport_" + std::string(80, '7') + ".mp4");
};

}  // namespace

TEST_F(UploadStatusWindowControllerTest, UploadsDeletesTheFileAndHandsTheLinkOn) {
  [status_controller showWindow];
  EXPECT_TRUE([[status_controller uploadStatusWindow] isVisible]);
  EXPECT_EQ([[status_controller uploadStatusWindow] level], NSFloatingWindowLevel);
  [[status_controller uploadStatusWindow] performClose:nil];
  EXPECT_TRUE([[status_controller uploadStatusWindow] isVisible]) << "it cannot be closed meanwhile";
  [status_controller tryAgain:nil];  // a key may reach a button that is hidden
  ASSERT_TRUE(SpinUntil([] { return completed_link != "none"; }));
  EXPECT_EQ(completed_link, "https://acme.orvane.localhost/review/7");
  EXPECT_FALSE([[status_controller uploadStatusWindow] isVisible]);
  EXPECT_FALSE(std::filesystem::exists(file_));
  EXPECT_EQ(cleanups, 0);
  EXPECT_GT(progress_calls, 1);
  EXPECT_EQ(api_.RequestsFor(std::string(ScriptedApi::kUpload) + "1").size(), 1u);
}

// The window that the hook opens stays as long as the user likes.
TEST_F(UploadStatusWindowControllerTest, BlocksOfTheHostRunWhileTheLinkIsShown) {
  static bool ran;
  ran = false;
  g_pCompleteFunc = [](std::string link) {
    completed_link = link;
    dispatch_async(dispatch_get_main_queue(), ^{
        ran = true;
    });
    UploadCompleteWindowController *complete = [[UploadCompleteWindowController alloc] initWithLink:FromUtf8(link)];
    RunWithScript([complete] { [complete showWindow]; },
                  [complete](Script &actions) {
                    actions.WaitFor("the host's block", [] { return ran; });
                    actions.OnMain([complete] {
                      EXPECT_TRUE([[complete uploadCompleteWindow] isVisible]);
                      [[complete uploadCompleteWindow] performClose:nil];
                    });
                  });
    [complete release];
  };
  [status_controller showWindow];
  ASSERT_TRUE(SpinUntil([] { return cleanups > 0; }));
  EXPECT_EQ(completed_link, "https://acme.orvane.localhost/review/7");
}

// Each of these answers leaves the file and the window, and says what the service said.
TEST_F(UploadStatusWindowControllerTest, ARefusalLeavesFileAndWindow) {
  const std::pair<std::string, std::string> cases[] = {
      {ScriptedApi::Refusal("The folder is full."), "The folder is full."},
      {"<html>no JSON</html>", ""},
      {R"({"root":{"status":1,"message":5}})", "5"},
      {R"({"root":{"status":1,"message":true}})", ""},
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
        [&texts](Script &actions) {
          actions.WaitFor("the alert", [] { return AlertPanel() != nil; });
          EXPECT_FALSE(UploadHasEnded()) << "the host must not export meanwhile";
          texts = DismissAlertWhenItComes(actions);
        });
    EXPECT_EQ(texts,
              "There was an error uploading to Orvane.\nThe system returned this message: \"" + message + "\"\n");
    EXPECT_TRUE([[status_controller uploadStatusWindow] isVisible]);
    EXPECT_TRUE(std::filesystem::exists(file_));
    // In words, to be copied, and below whatever the editor works in.
    EXPECT_EQ(std::string([[[status_controller uploadLabel] stringValue] UTF8String]),
              "The film was not uploaded. It is kept at\n" + file_);
    EXPECT_TRUE([[status_controller uploadLabel] isSelectable]);
    EXPECT_TRUE(SpinUntil([] { return ![[status_controller closeBtn] isHidden]; }));
    EXPECT_FALSE([[status_controller tryAgainBtn] isHidden]);
    EXPECT_EQ([[status_controller uploadStatusWindow] level], NSNormalWindowLevel);
  }
  EXPECT_EQ(completed_link, "none");
  EXPECT_EQ(cleanups, 0);
  Press([status_controller closeBtn]);
  EXPECT_FALSE([[status_controller uploadStatusWindow] isVisible]);
  EXPECT_TRUE(std::filesystem::exists(file_));
  EXPECT_EQ(cleanups, 1);
}

// The session is over meanwhile, then the service is away, then it refuses the user, then it answers nonsense.
TEST_F(UploadStatusWindowControllerTest, TriesAgainUntilTheFilmIsUploaded) {
  const std::string target = std::string(ScriptedApi::kUpload) + "1";
  api_.Answer(target, ScriptedApi::Refusal("Not logged in."));
  g_sd = "acme";
  g_un = "editor";
  std::vector<std::string> alerts;
  RunWithScript(
      [] {
        [status_controller showWindow];
        SpinUntil([] { return completed_link != "none"; });
      },
      [&](Script &actions) {
        alerts.push_back(DismissAlertWhenItComes(actions));
        g_pw = "changed";
        // Of the later tries the display may still be telling while the window grows again.
        EXPECT_EQ(TryAgain(actions), height_) << "what one try adds, the next takes away";
        alerts.push_back(DismissAlertWhenItComes(actions));
        actions.OnMain([] { EXPECT_EQ([[status_controller progressBar] doubleValue], 0) << "of the try before"; });
        api_.Answer(ScriptedApi::kStep, ScriptedApi::Refusal("Unknown customer."));
        TryAgain(actions);
        alerts.push_back(DismissAlertWhenItComes(actions));
        api_.Answer(ScriptedApi::kStep, "<html>Welcome</html>");
        TryAgain(actions);
        alerts.push_back(DismissAlertWhenItComes(actions));
        EXPECT_EQ(api_.RequestsFor(target).size(), 1u) << "nobody is logged in";
        api_.Answer(ScriptedApi::kStep,
                    R"({"root":{"status":"success","apiver":"3","auth_key":"k2","payload":{"token":"t2"}}})");
        api_.Answer(target, ScriptedApi::Success(R"({"link":"https://acme.orvane.localhost/review/7"})"));
        TryAgain(actions);
      });
  const std::string head = "There was an error uploading to Orvane.\nThe system returned this message: ";
  EXPECT_EQ(alerts,
            (std::vector<std::string>{head + "\"Not logged in.\"\n", head + "\"Unknown user or wrong password.\"\n",
                                      head + "\"Could not connect to the Orvane server.\"\n",
                                      head + "\"Something came that the plug-in cannot read.\"\n"}));
  EXPECT_EQ(completed_link, "https://acme.orvane.localhost/review/7");
  const orvane_test::Request last = api_.RequestsFor(target).back();
  std::string fields;
  for (const orvane_test::FormPart &part : last.parts) fields += part.fileName.empty() ? part.content + "|" : "";
  EXPECT_EQ(fields, "t2|k2|11|Title|b|a|");
  EXPECT_FALSE(std::filesystem::exists(file_));
  EXPECT_FALSE([[status_controller uploadStatusWindow] isVisible]);
  EXPECT_EQ(cleanups, 0);
}

// As after a render that was cancelled, and with a path that the plug-in has to cut.
TEST_F(UploadStatusWindowControllerTest, SaysWhereTheFilmIsIfItCannotBeUploaded) {
  const std::string elsewhere = folder_ / "elsewhere.mp4";
  std::filesystem::rename(file_, elsewhere);
  for (const std::string &film : {std::string(), file_, elsewhere}) {
    g_export.film = film;
    RunWithScript(
        [] {
          [status_controller showWindow];
          SpinUntil([] { return ![[status_controller closeBtn] isHidden]; });
        },
        [](Script &actions) { DismissAlertWhenItComes(actions); });
    EXPECT_EQ(Text([status_controller uploadLabel]),
              film != elsewhere ? "The film was not uploaded, as it was not rendered.\nExport the sequence again."
                                : "The film was not uploaded, as the path of the folder\nfor temporary files is too "
                                  "long. It is kept at\n" +
                                      film);
    EXPECT_TRUE([[status_controller tryAgainBtn] isHidden]) << "there is nothing to upload";
    [[status_controller closeBtn] setHidden:YES];
  }
  g_export.film.clear();
}

// What the service says may be longer than any screen.
TEST_F(UploadStatusWindowControllerTest, CutsALongMessage) {
  std::string message = "x";
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
  setenv("TZ", "HERE-5:30", 1);  // east of Greenwich
  tzset();
  std::atomic<bool> answer(false);
  std::string waits;
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
      [&answer, &waits](Script &actions) {
        for (int i = 0; i <= 20000; ++i) [status_controller updateProgressBarWithTotal:45e6 now:45e6 * i / 20000];
        actions.WaitFor("the newest progress", [] { return [[status_controller progressBar] doubleValue] == 45e6; });
        actions.OnMain([] {
          EXPECT_STREQ([[[status_controller uploadLabel] stringValue] UTF8String],
                       "Uploading to Orvane: 45.0 MB of 45.0 MB (100 %)");
          [status_controller updateProgressBarWithTotal:999.96e6 now:999.9e6];
          EXPECT_EQ(Text([status_controller uploadLabel]), "Uploading to Orvane: 999.9 MB of 1.00 GB (99 %)");
        });
        actions.WaitFor("no more bytes",
                        [&waits] { return (waits = Text([status_controller rateLabel])).size() > 30; });
        answer = true;
        DismissAlertWhenItComes(actions);
      });
  unsetenv("TZ");
  tzset();
  int hour = 0, minute = 0, second = 0;
  EXPECT_EQ(sscanf(waits.c_str(), "Waiting for the service since %d:%d:%d", &hour, &minute, &second), 3) << waits;
  // In the local time; it began some five seconds ago.
  const time_t ago = (time(nullptr) + 19800 - (hour * 60 + minute) * 60 - second) % 86400;
  EXPECT_TRUE(ago >= 4 && ago < 60) << waits;
}
