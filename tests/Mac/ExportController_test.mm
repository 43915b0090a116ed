// The built module, loaded by the host through its entry point.
#include "ExportController.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstring>

#include "HostSession.h"
#include "Suites.h"

namespace {

class ExportController : public testing::Test {
 protected:
  ExportController() { host_.Load(ORVANE_BUNDLE_PATH); }

  static ExportControllerEntryFunc Entry() {
    void *module = dlopen(ORVANE_BUNDLE_PATH "/Contents/MacOS/Orvane", RTLD_NOW | RTLD_NOLOAD);
    return reinterpret_cast<ExportControllerEntryFunc>(dlsym(module, "xExportControllerEntry"));
  }

  orvane_host::HostSession host_{orvane_host::Sequence()};
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
  host_.Startup();
  EXPECT_EQ(host_.DisplayName(), "Orvane");
}

// The host ends the process when a suite is released that is not held, or held at the end.
TEST_F(ExportController, HoldsItsSuitesFromStartUpToShutDown) {
  ecStdParms parameters = {1, orvane_host::StandardSuites()};
  for (int round = 0; round < 2; ++round) {
    host_.Startup();
    host_.Shutdown();
    EXPECT_EQ(Entry()(ecSelShutdown, &parameters, nullptr), 0) << "nothing is left to release";
  }
}
