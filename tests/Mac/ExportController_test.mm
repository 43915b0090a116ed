// The built module, loaded by the host through its entry point.
#include "ExportController.h"

#include <dlfcn.h>

#include <cstring>

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
    LogInAndRemember(actions);
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

TEST_F(ExportController, ACloseOfAWindowCleansUpOnce) {
  SaveLogin();
  testing::internal::CaptureStderr();
  EXPECT_EQ(Export([](Script &actions) { CloseWindow(actions, @"Orvane: Upload"); }), 0);
  EXPECT_EQ(CapturedCleanups(), 1);
  EXPECT_TRUE(LoginIsSaved());

  EXPECT_EQ(host_->Outcome(), orvane_host::ExitStatus::kUserCancelled);
  EXPECT_TRUE(host_->RenderedFiles().empty());
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
