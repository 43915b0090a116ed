// The built module, loaded by the host through its entry point.
#include "ExportController.h"

#include <dlfcn.h>

#include <cstring>
#include <filesystem>

#import "Controls.h"
#include "PluginRun.h"
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
  EXPECT_EQ(Export([](Script &actions) {
              ChooseAndUpload(actions);
              actions.WaitFor("the complete window", [] { return IsModal(WindowTitled(@"Orvane: Upload Complete")); });
              actions.OnMain([] { [NSApp stopModal]; });
            }),
            0);
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
