// The program as its users run it, on a display. Each test is started with one of its own.
#include <gtest/gtest.h>

#include <cstdlib>

#include "Deployment.h"
#include "RunningProgram.h"
#include "TemporaryFolder.h"

namespace orvane_host {
namespace {

class OrvaneHost : public testing::Test {
 protected:
  OrvaneHost() {
    setenv("ORVANE_PRESET", ORVANE_PRESET_DIR "/" ORVANE_LOW_PRESET, 1);
    setenv("ORVANE_DESTINATION", (folder_ / "film.mp4").c_str(), 1);
    setenv("ORVANE_SCRIPT", "good", 1);
  }
  ~OrvaneHost() override { setenv("TMPDIR", outer_.c_str(), 1); }

  static ChildResult Run(const std::vector<std::string>& options) {
    // The outer program ends one that hangs.
    std::vector<std::string> command{"timeout", "60", ORVANE_HOST_PROGRAM};
    command.insert(command.end(), options.begin(), options.end());
    return RunChild(command);
  }

  static ChildResult Export(const char* script, std::vector<std::string> options = {}) {
    setenv("ORVANE_SCRIPT", script, 1);
    options.insert(options.end(), {"--plugin", ORVANE_SCRIPTED_BUNDLE, "--seconds", "0.4", "--export"});
    return Run(options);
  }

  const std::filesystem::path outer_ = std::filesystem::temp_directory_path();
  TemporaryFolder folder_;
};

bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST_F(OrvaneHost, ExportsAtOnceAndTellsScripts) {
  const ChildResult result = Export("good");
  EXPECT_EQ(result.status, 0) << result.errors;
  const std::string film = folder_ / "film.mp4";
  const std::string sum = RunChild({"sha256sum", film}).output.substr(0, 64);
  EXPECT_EQ(result.output, "orvane-host: loaded \"Scripted\" from " ORVANE_SCRIPTED_BUNDLE
                           "\n"
                           "orvane-host: rendered " +
                               film + " (" + std::to_string(std::filesystem::file_size(film)) + " bytes, sha256 " +
                               sum +
                               ", 854x480, 0.4 s)\n"
                               "orvane-host: export answered 0\n"
                               "orvane-host: done\n");
}

TEST_F(OrvaneHost, ExitStatusSaysWhatHappened) {
  EXPECT_EQ(Export("user cancels").status, 3);
  EXPECT_EQ(Export("good", {"--fail", "render"}).status, 4);
  EXPECT_EQ(Export("event").status, 5);
  EXPECT_EQ(Export("start-up fails").status, 6);
  for (const char* rule : {"wrong thread", "overrun", "unknown version", "unreleased", "released twice", "throws",
                           "unfreed", "endless path", "wrong handle"}) {
    EXPECT_EQ(Export(rule).status, 70) << rule;
  }
  EXPECT_EQ(Run({"--plugin", folder_ / "none.bundle"}).status, 6);
}

TEST_F(OrvaneHost, WrongOptionsAreToldAndEndIt) {
  const std::vector<std::vector<std::string>> wrong{
      {"--size", "1280x720p"}, {"--size", "8x8"}, {"--rate", "1000/1"}, {"--seconds", "nan"}, {"--media", "/none"}};
  for (const std::vector<std::string>& options : wrong) {
    const ChildResult result = Run(options);
    EXPECT_EQ(result.status, 2) << options.back();
    EXPECT_NE(result.errors, "");
  }
  const ChildResult blind = RunChild({"env", "-u", "DISPLAY", ORVANE_HOST_PROGRAM});
  EXPECT_EQ(blind.status, 2);
  EXPECT_TRUE(Contains(blind.errors, "DISPLAY")) << blind.errors;
  const ChildResult help = Run({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_TRUE(Contains(help.output, "--connect-port N"));
}

// SIGTERM while FFmpeg works for an hour: the render is cancelled, shut-down is called, nothing is left behind.
TEST_F(OrvaneHost, TerminationDuringARenderEndsInOrder) {
  RunningProgram host({ORVANE_HOST_PROGRAM, "--plugin", ORVANE_SCRIPTED_BUNDLE, "--seconds", "3600", "--export"});
  ASSERT_NO_FATAL_FAILURE(host.Until("a partial file", [this] { return folder_.Count() == 1; }));
  host.Signal(SIGTERM);
  EXPECT_EQ(host.End(), 4) << host.errors;
  EXPECT_TRUE(Contains(host.output, "orvane-host: export answered 2\norvane-host: done\n")) << host.output;
  EXPECT_EQ(folder_.Count(), 0U);
}

// A menu follows the mouse in an event loop of its own.
TEST_F(OrvaneHost, TerminationWhileAMenuIsOpenEndsInOrder) {
  RunningProgram host({ORVANE_HOST_PROGRAM, "--plugin", ORVANE_SCRIPTED_BUNDLE});
  // The windows, menus included, one a line that begins with its number.
  std::string windows;
  const auto list = [&windows] { return (windows = RunChild({"wmctrl", "-l"}).output).size(); };
  ASSERT_NO_FATAL_FAILURE(host.UntilItSays("loaded"));
  std::string window;
  ASSERT_NO_FATAL_FAILURE(host.Until("the window", [&] {
    if (list() == 0) return false;
    window = windows.substr(0, windows.find(' '));
    return Contains(RunChild({"xwininfo", "-id", window}).output, "IsViewable");
  }));
  RunChild({"xdotool", "windowactivate", "--sync", window});
  RunChild({"xdotool", "mousemove", "--window", window, "110", "13", "mousedown", "1"});
  const size_t before = windows.size();
  ASSERT_NO_FATAL_FAILURE(host.Until("an open menu", [&] { return list() > before; }));
  host.Signal(SIGTERM);
  EXPECT_EQ(host.End(), 0) << host.errors;
  RunChild({"xdotool", "mouseup", "1"});
  EXPECT_TRUE(Contains(host.output, "orvane-host: done\n")) << host.output;
}

TEST_F(OrvaneHost, TheCloseButtonOfTheRenderCancelsIt) {
  RunningProgram host({ORVANE_HOST_PROGRAM, "--plugin", ORVANE_SCRIPTED_BUNDLE, "--seconds", "3600", "--export"});
  ASSERT_NO_FATAL_FAILURE(host.Until("the window", [] { return RunChild({"wmctrl", "-c", "Rendering"}).status == 0; }));
  EXPECT_EQ(host.End(), 4) << host.errors;
  EXPECT_TRUE(Contains(host.errors, "the render was cancelled")) << host.errors;
  EXPECT_EQ(folder_.Count(), 0U);
}

TEST_F(OrvaneHost, ClearsAtItsStartWhatAKilledOneLeft) {
  setenv("TMPDIR", folder_.Path().c_str(), 1);
  WriteFile(folder_ / "somebody's.part1", "");
  {
    RunningProgram host({ORVANE_HOST_PROGRAM, "--plugin", ORVANE_SCRIPTED_BUNDLE, "--seconds", "3600", "--export"});
    ASSERT_NO_FATAL_FAILURE(host.Until("a partial file", [this] { return folder_.Count() == 2; }));
    // A living host's file stays.
    EXPECT_EQ(Run({"--plugin", folder_ / "none.bundle"}).status, 6);
    EXPECT_EQ(folder_.Count(), 2U);
    host.Signal(SIGKILL);
    host.End();
  }
  EXPECT_EQ(folder_.Count(), 2U);
  EXPECT_EQ(Run({"--plugin", folder_ / "none.bundle"}).status, 6);
  EXPECT_EQ(folder_.Count(), 1U);
  EXPECT_TRUE(std::filesystem::exists(folder_ / "somebody's.part1"));
}

}  // namespace
}  // namespace orvane_host
