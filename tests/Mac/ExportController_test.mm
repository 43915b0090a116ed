// The built module, loaded by the host through its entry point.
#include "ExportController.h"

#include <dlfcn.h>
#include <malloc.h>

#include <atomic>
#include <cstring>
#include <filesystem>

#import "Controls.h"
#include "LocalTrust.h"
#include "PluginRun.h"
#include "ScriptedApi.h"
#include "Suites.h"

using namespace window_test;

namespace {

class ExportController : public PluginRun {
 protected:
  static ExportControllerEntryFunc Entry() {
    void *module = dlopen(ORVANE_BUNDLE_PATH "/Contents/MacOS/Orvane", RTLD_NOW | RTLD_NOLOAD);
    return reinterpret_cast<ExportControllerEntryFunc>(dlsym(module, "xExportControllerEntry"));
  }

  // How often the plug-in has cleaned up since CaptureStderr was called.
  static int CapturedCleanups() {
    const std::string log = testing::internal::GetCapturedStderr();
    int count = 0;
    for (size_t at = 0; (at = log.find("[orvanevorrel: clearing variables]", at)) != std::string::npos; ++at) ++count;
    return count;
  }
};

size_t OpenFiles() {
  const std::filesystem::directory_iterator entries("/proc/self/fd");
  return static_cast<size_t>(std::distance(begin(entries), end(entries)));
}

// Runs the body while the installed preset has another name. Returns false when it cannot be moved.
bool WithoutPreset(const char *name, const std::function<void()> &body) {
  const std::filesystem::path folder = "/Library/Application Support/Adobe/Common/Plug-ins/7.0/MediaCore/OrvaneVorrel";
  const std::filesystem::path hidden = folder / "hidden-by-test";
  std::error_code error;
  std::filesystem::rename(folder / name, hidden, error);
  if (error) return false;
  body();
  std::filesystem::rename(hidden, folder / name);
  return true;
}

constexpr prUTF16Char kGuard = 0x5a5a;

}  // namespace

TEST_F(ExportController, KnowsItsSelectorsAlone) {
  for (int selector : {-1, 2, 3, 4, 5, 6, 8, 100}) EXPECT_EQ(Entry()(selector, nullptr, nullptr), -100) << selector;
  // Without a basic suite nothing is acquired or released.
  ecStdParms parameters = {1, nullptr};
  struct {
    ExportControllerInitRec record;
    prUTF16Char guard[4];
  } init = {};
  std::fill(std::begin(init.record.displayName) + 6, std::end(init.record.displayName), kGuard);
  EXPECT_EQ(Entry()(7, &parameters, nullptr), 0);
  EXPECT_EQ(Entry()(0, &parameters, &init.record), 0);
  EXPECT_EQ(memcmp(init.record.displayName, u"Orvane", 6 * sizeof(prUTF16Char)), 0);
  EXPECT_EQ(init.record.displayName[6], kGuard);
  EXPECT_EQ(host_->DisplayName(), "Orvane");
}

// The host ends the process when a suite is released that is not held, or held at the end.
TEST_F(ExportController, HoldsItsSuitesFromStartUpToShutDown) {
  ecStdParms parameters = {1, orvane_host::StandardSuites()};
  for (int round = 0; round < 2; ++round) {
    host_->Startup();
    host_->Shutdown();
    EXPECT_EQ(Entry()(ecSelShutdown, &parameters, nullptr), 0) << "nothing is left to release";
  }
}

TEST_F(ExportController, ExportsUploadsAndDeletesTheTemporaryFile) {
  testing::internal::CaptureStderr();
  const csSDK_int32 answer = Export([](Script &actions) {
    LogIn(actions, kPassword, true);
    UploadAndClose(actions);
  });
  EXPECT_EQ(CapturedCleanups(), 1);
  EXPECT_EQ(answer, 0);
  ASSERT_EQ(host_->RenderedFiles().size(), 1u);
  EXPECT_EQ(StoredDigests(), std::vector<std::string>{host_->RenderedFiles()[0].sha256});
  EXPECT_EQ(TemporaryFiles(), std::vector<std::string>{});
  EXPECT_TRUE(LoginIsSaved());
  EXPECT_TRUE(host_->Events().empty());

  // The next export of the same process needs no login window.
  EXPECT_EQ(Export(UploadAndClose), 0);
  EXPECT_EQ(StoredDigests().size(), 2u);
}

TEST_F(ExportController, EveryWayOutCleansUpOnce) {
  SaveLogin("a password that has changed");
  testing::internal::CaptureStderr();
  std::string alert;
  EXPECT_EQ(Export([&alert](Script &actions) {
              alert = DismissAlertWhenItComes(actions);
              CloseWindow(actions, @"Orvane: Log In");
            }),
            0);
  EXPECT_EQ(CapturedCleanups(), 1);
  EXPECT_EQ(alert, "Error\nThe saved Orvane username and/or password is invalid. Please log in again.\n");
  EXPECT_FALSE(LoginIsSaved());

  SaveLogin();
  testing::internal::CaptureStderr();
  EXPECT_EQ(Export([](Script &actions) { CloseWindow(actions, @"Orvane: Upload"); }), 0);
  EXPECT_EQ(CapturedCleanups(), 1);
  EXPECT_TRUE(LoginIsSaved());

  testing::internal::CaptureStderr();
  EXPECT_EQ(Export([](Script &actions) {
              actions.WaitFor("the upload window", [] { return IsModal(WindowTitled(@"Orvane: Upload")); });
              actions.OnMain([] { Press(ButtonTitled(WindowTitled(@"Orvane: Upload"), @"Log Out")); });
            }),
            0);
  EXPECT_EQ(CapturedCleanups(), 1);
  EXPECT_FALSE(LoginIsSaved());
  EXPECT_EQ(host_->Outcome(), orvane_host::ExitStatus::kUserCancelled);
  EXPECT_TRUE(host_->RenderedFiles().empty());
}

TEST_F(ExportController, ChoosesThePresetByTheFrameSize) {
  const struct {
    int width, height;
    const char *preset;
  } cases[] = {{1920, 1080, "HIGH"}, {1919, 1080, "MEDIUM"}, {1280, 720, "MEDIUM"},
               {1279, 1279, "LOW"},  {720, 1920, "HIGH"},    {720, 1280, "MEDIUM"}};
  SaveLogin();
  for (const auto &item : cases) {
    UseSequence(item.width, item.height);
    host_->SetRenderFault(orvane_host::RenderFault::kCancel);
    testing::internal::CaptureStderr();
    const csSDK_int32 answer = Export([](Script &actions) {
      ChooseAndUpload(actions);
      // A cancelled render leaves no file; the upload is tried all the same.
      DismissAlertWhenItComes(actions);
    });
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_NE(answer, 0);
    EXPECT_NE(log.find(std::string("[orvanevorrel: selected ") + item.preset + " preset]"), std::string::npos)
        << item.width << " x " << item.height;
    EXPECT_NE(log.find("[orvanevorrel: Sequence frame size is " + std::to_string(item.width) + " x " +
                       std::to_string(item.height) + "]\n"),
              std::string::npos);
  }
}

TEST_F(ExportController, ARefusedUploadKeepsTheFileAndTheNextExportWorks) {
  SaveLogin();
  options_.refuse_uploads = "The disk is full.";
  StartService();
  std::string alert;
  EXPECT_EQ(Export([&alert](Script &actions) {
              ChooseAndUpload(actions);
              alert = DismissAlertWhenItComes(actions);
            }),
            0);
  EXPECT_EQ(alert,
            "There was an error uploading to Orvane.\nThe system returned this message: \"The disk is full.\"\n");
  EXPECT_NE(WindowTitled(@"Orvane: Uploading"), nil);
  EXPECT_EQ(TemporaryFiles().size(), 1u);
  EXPECT_TRUE(StoredDigests().empty());

  options_.refuse_uploads.reset();
  StartService();
  EXPECT_EQ(Export([](Script &actions) {
              ChooseAndUpload(actions);
              actions.WaitFor("the old progress window to go", [] {
                return IsModal(WindowTitled(@"Orvane: Upload Complete")) && !WindowTitled(@"Orvane: Uploading");
              });
              CloseComplete(actions);
            }),
            0);
  EXPECT_EQ(StoredDigests().size(), 1u);
}

// A hotel's network answers every request with a page of its own.
TEST_F(ExportController, ACaptivePortalEndsTheExportAndSparesTheSavedLogin) {
  orvane_test::ScriptedServer portal;
  portal.RouteOthers([](const orvane_test::Request &) { return orvane_test::TextResponse("<html>Welcome</html>"); });
  orvane_host::SetTrustedAuthority(orvane_test::ScriptedServer::AuthorityFile());
  orvane_host::SetConnectPort(portal.port());
  SaveLogin();
  testing::internal::CaptureStderr();
  EXPECT_EQ(Export([](Script &) {}), -1);
  EXPECT_EQ(CapturedCleanups(), 1);
  ASSERT_EQ(host_->Events().size(), 1u);
  EXPECT_EQ(host_->Events()[0].type, 3u);
  EXPECT_NE(host_->Events()[0].text.find("Check that this computer is online"), std::string::npos);
  EXPECT_TRUE(LoginIsSaved());

  ForgetLogin();
  testing::internal::CaptureStderr();
  EXPECT_EQ(Export([](Script &actions) { LogIn(actions); }), -1);
  EXPECT_EQ(CapturedCleanups(), 1);
  EXPECT_EQ(host_->Events().size(), 2u);
  EXPECT_EQ([NSApp modalWindow], nil);
  EXPECT_EQ(WindowTitled(@"Orvane: Log In"), nil);

  StartService();
  EXPECT_EQ(Export([](Script &actions) {
              LogIn(actions);
              UploadAndClose(actions);
            }),
            0);
}

TEST_F(ExportController, RefusesASecondExportWhileAnUploadRuns) {
  std::atomic<bool> answer_upload(false);
  ScriptedApi slow;
  slow.Answer(ScriptedApi::kProjects, ScriptedApi::Success(R"([{"id":"1","project_name":"東京ドキュメンタリー"}])"));
  slow.Answer(std::string(ScriptedApi::kFolders) + "1",
              ScriptedApi::Success(R"([{"id":"2","name":"      最終版 🎬","sub_folders":0}])"));
  slow.Server().Route(std::string(ScriptedApi::kUpload) + "1", [&answer_upload](const orvane_test::Request &) {
    while (!answer_upload) std::this_thread::yield();
    return orvane_test::TextResponse(ScriptedApi::Success(R"({"link":"https://x.test/"})"));
  });
  SaveLogin("secret");
  csSDK_int32 second = 0;
  EXPECT_EQ(Export([this, &second, &answer_upload](Script &actions) {
              ChooseAndUpload(actions);
              actions.WaitFor("the progress window",
                              [this] { return WindowTitled(@"Orvane: Uploading") != nil && !host_->InCall(); });
              actions.OnMain([this, &second] { second = host_->ExportTimeline(); });
              answer_upload = true;
              CloseComplete(actions);
            }),
            0);
  EXPECT_EQ(second, -1);
  ASSERT_EQ(host_->Events().size(), 1u);
  EXPECT_EQ(host_->Events()[0].type, 2u);
}

// The host's own windows and menus may call meanwhile: what the open window uses must stay.
TEST_F(ExportController, AnOpenWindowKeepsItsExport) {
  const auto call_host_functions = [](Script &actions, NSString *title) {
    actions.WaitFor("the window", [title] { return IsModal(WindowTitled(title)); });
    actions.OnMain([] {
      ecStdParms parameters = {1, nullptr};
      ExportControllerTimelineInfoRec timeline = {};
      EXPECT_EQ(Entry()(ecSelExportTimeline, &parameters, &timeline), -1);
      EXPECT_EQ(Entry()(ecSelShutdown, &parameters, nullptr), 0);
    });
  };
  testing::internal::CaptureStderr();
  EXPECT_EQ(Export([call_host_functions](Script &actions) {
              call_host_functions(actions, @"Orvane: Log In");
              LogIn(actions);
              call_host_functions(actions, @"Orvane: Upload");
              ChooseAndUpload(actions);
              call_host_functions(actions, @"Orvane: Upload Complete");
              CloseComplete(actions);
            }),
            0);
  EXPECT_EQ(CapturedCleanups(), 1);
  EXPECT_EQ(StoredDigests().size(), 1u);
  ASSERT_EQ(host_->Events().size(), 3u);
  for (const auto &event : host_->Events()) EXPECT_EQ(event.type, 2u);
}

// A modal loop can be ended by somebody else.
TEST_F(ExportController, AWindowWhoseLoopWasEndedDoesNotBlockTheNextExport) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(Export([](Script &actions) {
              actions.WaitFor("the login window", [] { return IsModal(WindowTitled(@"Orvane: Log In")); });
              actions.OnMain([] { [NSApp stopModal]; });
            }),
            0);
  EXPECT_EQ(CapturedCleanups(), 0);
  SaveLogin();
  EXPECT_EQ(Export(UploadAndClose), 0);
}

TEST_F(ExportController, ReportsAMissingPresetOfTheChosenSize) {
  SaveLogin();
  csSDK_int32 answer = 0;
  const bool hidden = WithoutPreset("Orvane_low.epr", [this, &answer] {
    answer = Export([](Script &actions) {
      ChooseAndUpload(actions);
      DismissAlertWhenItComes(actions);
    });
  });
  if (!hidden) GTEST_SKIP() << "the installed presets cannot be moved";
  EXPECT_EQ(answer, -1);
  ASSERT_EQ(host_->Events().size(), 1u);
  EXPECT_EQ(host_->Events()[0].title, "SDK Export Controller error");
  EXPECT_EQ(host_->Events()[0].text, "No preset found.  Export cancelled.");
}

TEST_F(ExportController, SaysThatThePresetsAreMissing) {
  std::string alert;
  const bool hidden = WithoutPreset("Orvane.epr", [this, &alert] {
    testing::internal::CaptureStderr();
    EXPECT_EQ(Export([&alert](Script &actions) { alert = DismissAlertWhenItComes(actions); }), 0);
    EXPECT_EQ(CapturedCleanups(), 1);
  });
  if (!hidden) GTEST_SKIP() << "the installed presets cannot be moved";
  EXPECT_EQ(alert,
            "The Orvane encoding configuration is missing. Orvane Vorrel will not function without this file.\n"
            "The plugin may not have installed correctly. Try uninstalling and re-installing it.\n\n('Orvane.epr' not "
            "found in '/Library/Application Support/Adobe/Common/Plug-ins/7.0/MediaCore/OrvaneVorrel')\n");
}

TEST_F(ExportController, MemoryAndHandlesStayLevelOverTwentyExports) {
  SaveLogin();
  const auto export_once = [this] { ASSERT_EQ(Export(UploadAndClose), 0); };
  for (int i = 0; i < 3; ++i) export_once();
  const size_t files = OpenFiles();
  const size_t memory = mallinfo2().uordblks;
  for (int i = 0; i < 20; ++i) export_once();
  EXPECT_LE(OpenFiles(), files + 1);
  const double growth = (static_cast<double>(mallinfo2().uordblks) - static_cast<double>(memory)) / 20 / 1024;
  RecordProperty("kib_per_export", std::to_string(growth));
  printf("growth: %.1f KiB an export\n", growth);
  // Says nothing under AddressSanitizer, whose allocator the C library does not count.
  EXPECT_LT(growth, 64);
}
