// The program as it is started from a command line.
#include "RunningService.h"

#include "ChildProcess.h"

#include <signal.h>

namespace {

using orvane_host::ChildResult;

/// The started program. What it says is read until it ends.
class Program {
 public:
  explicit Program(const std::vector<std::string>& arguments) : process_(Command(arguments)) {}

  static std::vector<std::string> Command(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), ORVANE_SERVICE_PROGRAM);
    return arguments;
  }

  /// Everything it has said, once that contains the text. Fails the test when the program ends before.
  std::string OutWith(const std::string& text) {
    while (out_.find(text) == std::string::npos && process_.Read(100, out_, error_)) {
    }
    EXPECT_NE(out_.find(text), std::string::npos) << error_;
    return out_;
  }

  /// Sends it the signal and returns its exit status.
  int End(int number) {
    process_.Signal(number);
    while (process_.Read(100, out_, error_)) {
    }
    return process_.Wait();
  }

 private:
  orvane_host::ChildProcess process_;
  std::string out_;
  std::string error_;
};

TEST(ProgramTest, SaysWhenItIsReadyAndEndsOnSignals) {
  const TemporaryFolder folder;
  const std::string data = folder / "data";
  for (int number : {SIGTERM, SIGINT}) {
    Program program({"--data", data, "--port", "0"});
    const std::string out = program.OutWith(" (data in " + data + ")\n");
    EXPECT_NE(out.find("ready on https://127.0.0.1:"), std::string::npos) << out;
    const bool has_login = out.find("demo login: subdomain acme, user editor, password ") != std::string::npos;
    EXPECT_EQ(has_login, number == SIGTERM) << "only at the first start: " << out;
    EXPECT_EQ(program.End(number), 0);
  }
}

TEST(ProgramTest, TellsWrongUsageFromFailure) {
  const TemporaryFolder folder;
  const std::string data = folder / "data";
  WriteFile(folder / "file", "not a folder");
  Program first({"--data", data, "--port", "0"});
  first.OutWith("ready");
  struct Case {
    std::vector<std::string> arguments;
    int code;
    std::string error;
  };
  const std::vector<Case> cases = {{{"--help"}, 0, ""},
                                   {{"--unknown"}, 2, "--unknown"},
                                   {{"--port"}, 2, "--port"},
                                   {{"--port", "70000"}, 2, "--port"},
                                   {{"--port", "80x"}, 2, "--port"},
                                   {{"--demo-password", "a&b"}, 2, "--demo-password"},
                                   {{"stray"}, 2, "stray"},
                                   {{"--data", folder / "file"}, 1, "file"},
                                   {{"--data", data, "--port", "0"}, 1, "another service"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.arguments.back());
    const ChildResult result = orvane_host::RunChild(Program::Command(c.arguments));
    EXPECT_EQ(result.status, c.code);
    EXPECT_NE(result.errors.find(c.error), std::string::npos) << result.errors;
  }
}

}  // namespace
