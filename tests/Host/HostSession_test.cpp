#include "HostSession.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "SuiteStatus.h"
#include "TemporaryFolder.h"
#include "Violation.h"

namespace orvane_host {
namespace {

// A session with the scripted plug-in, whose violations are gathered instead of ending the process.
class HostSessionTest : public testing::Test {
 protected:
  HostSessionTest() {
    SetViolationHandler([this](const std::string& what) { violations_ += what + "\n"; });
    setenv("ORVANE_PRESET", ORVANE_PRESET_DIR "/Orvane_low.epr", 1);
    setenv("ORVANE_DESTINATION", (folder_ / "film.mp4").c_str(), 1);
    sequence_.width = 640;
    sequence_.height = 360;
    sequence_.seconds = 0.4;
  }
  ~HostSessionTest() override { SetViolationHandler(nullptr); }

  // Runs a whole life of the plug-in. Returns what its export answered.
  csSDK_int32 Run(const char* script) {
    violations_.clear();
    setenv("ORVANE_SCRIPT", script, 1);
    HostSession session(sequence_);
    session.Load(ORVANE_SCRIPTED_BUNDLE);
    session.Startup();
    session.SetRenderFault(fault_);
    const csSDK_int32 answer = session.ExportTimeline();
    outcome_ = session.Outcome();
    name_ = session.DisplayName();
    events_ = session.Events();
    files_ = session.RenderedFiles();
    session.Shutdown();
    return answer;
  }

  // The violations of a life that may end at its start.
  std::string ViolationsOf(const char* script) {
    try {
      Run(script);
    } catch (const PluginError& error) {
      violations_ += std::string("not started: ") + error.what();
    }
    return violations_;
  }

  TemporaryFolder folder_;
  Sequence sequence_;
  RenderFault fault_ = RenderFault::kNone;
  std::string violations_;
  ExitStatus outcome_ = ExitStatus::kExported;
  std::string name_;
  std::vector<ErrorEvent> events_;
  std::vector<RenderedFile> files_;
};

TEST_F(HostSessionTest, WellBehavedPluginExports) {
  EXPECT_EQ(Run("good"), kSuiteSuccess);
  EXPECT_EQ(outcome_, ExitStatus::kExported);
  EXPECT_EQ(violations_, "");
  EXPECT_EQ(name_, "Scripted");
  ASSERT_EQ(files_.size(), 1U);
  EXPECT_EQ(files_[0].path, folder_ / "film.mp4");
  EXPECT_TRUE(std::filesystem::exists(files_[0].path));
}

TEST_F(HostSessionTest, OutcomeSaysWhatHappened) {
  EXPECT_EQ(Run("user cancels"), 0);
  EXPECT_EQ(outcome_, ExitStatus::kUserCancelled);

  EXPECT_EQ(Run("event"), -1);
  EXPECT_EQ(outcome_, ExitStatus::kPluginError);
  ASSERT_EQ(events_.size(), 1U);
  EXPECT_EQ(events_[0].title, "T\u00fc");
  EXPECT_EQ(events_[0].text, "\U0001F3AC");

  fault_ = RenderFault::kCancel;
  EXPECT_EQ(Run("good"), kSuiteCancelled);
  EXPECT_EQ(outcome_, ExitStatus::kRenderFailed);
  fault_ = RenderFault::kRender;
  EXPECT_EQ(Run("good"), kSuiteFailed);
  EXPECT_EQ(outcome_, ExitStatus::kRenderFailed);
  EXPECT_EQ(violations_, "");
  EXPECT_EQ(folder_.Count(), 0U);
}

TEST_F(HostSessionTest, EveryBrokenRuleIsTold) {
  const std::vector<std::pair<const char*, std::string>> cases{
      {"unknown version", "there is no suite \"Premiere Time Suite\" version 2"},
      {"unreleased", "\"Premiere Time Suite\" version 1 was not released at shut-down"},
      {"released twice", "was released without having been acquired"},
      {"unfreed", "1 blocks of memory were not freed"},
      {"wrong thread", "on another thread than the main thread"},
      {"overrun", "wrote past the ends of the init record"},
      {"throws", "an exception left the entry point: lost"},
      {"wrong handle", "another handle"},
      {"endless path", "the destination is not a full path in UTF-16"},
  };
  for (const auto& [script, expected] : cases) {
    EXPECT_NE(ViolationsOf(script).find(expected), std::string::npos) << script << ": " << violations_;
  }
  EXPECT_EQ(ViolationsOf("good"), "") << "nothing may be left over from the earlier lives";
}

TEST_F(HostSessionTest, FailedStartupAndUnusableBundlesAreRefused) {
  EXPECT_NE(ViolationsOf("start-up fails").find("answered 7"), std::string::npos) << violations_;
  HostSession session(sequence_);
  std::filesystem::create_directories(folder_ / "Empty.bundle/Resources");
  EXPECT_THROW(session.Load(folder_ / "Empty.bundle"), PluginError);
}

}  // namespace
}  // namespace orvane_host
