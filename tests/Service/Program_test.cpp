// The program as it is started from a command line.
#include "RunningProgram.h"
#include "RunningService.h"

namespace {

std::vector<std::string> Command(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), ORVANE_SERVICE_PROGRAM);
  return arguments;
}

TEST(ProgramTest, SaysWhenItIsReadyAndEndsOnSignals) {
  const TemporaryFolder folder;
  const std::string data = folder / "data";
  for (int number : {SIGTERM, SIGINT, SIGHUP}) {
    RunningProgram program(Command({"--data", data, "--port", "0"}));
    ASSERT_NO_FATAL_FAILURE(program.UntilItSays(" (data in " + data + ")\n"));
    const std::string& out = program.output;
    EXPECT_NE(out.find("ready on https://127.0.0.1:"), std::string::npos) << out;
    const std::string file = data + "/demo-password";
    const bool has_login =
        out.find("demo login: subdomain acme, user editor, password in " + file) != std::string::npos;
    EXPECT_EQ(has_login, number == SIGTERM) << "only at the first start: " << out;
    EXPECT_EQ(std::filesystem::status(file).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    program.Signal(number);
    EXPECT_EQ(program.End(), 0);
  }
}

TEST(ProgramTest, TellsWrongUsageFromFailure) {
  const TemporaryFolder folder;
  const std::string data = folder / "data";
  WriteFile(folder / "password", "a&b\n");
  RunningProgram first(Command({"--data", data, "--port", "0"}));
  ASSERT_NO_FATAL_FAILURE(first.UntilItSays("ready"));
  struct Case {
    std::vector<std::string> arguments;
    int code;
    std::string error;
  };
  const std::vector<Case> cases = {{{"--help"}, 0, ""},
                                   {{"--port", "70000"}, 2, "--port"},
                                   {{"--demo-password-file", folder / "password"}, 2, "--demo-password-file"},
                                   {{"--data", data, "--port", "0"}, 1, "another service"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.arguments.back());
    const orvane_host::ChildResult result = orvane_host::RunChild(Command(c.arguments));
    EXPECT_EQ(result.status, c.code);
    EXPECT_NE(result.errors.find(c.error), std::string::npos) << result.errors;
  }
}

}  // namespace
