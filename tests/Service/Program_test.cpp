// The program as it is started from a command line.
#include "RunningProgram.h"
#include "TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

TEST(ProgramTest, SaysWhenItIsReadyAndEndsOnSignals) {
  const TemporaryFolder folder;
  const std::string data = folder / "data", file = data + "/demo-password";
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
    RunningProgram program({ORVANE_SERVICE_PROGRAM, "--data", data, "--port", "0"});
    ASSERT_NO_FATAL_FAILURE(program.UntilItSays(" (data in " + data + ")\n"));
    EXPECT_NE(program.output.find("ready on https://127.0.0.1:"), std::string::npos) << program.output;
    const size_t login = program.output.find("demo login: subdomain acme, user editor, password in " + file);
    EXPECT_EQ(login == 16, number == SIGTERM) << "only at the first start: " << program.output;
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    program.Signal(number);
    EXPECT_EQ(program.End(), 0);
  }
}

TEST(ProgramTest, TellsWrongUsageFromFailureAndWarns) {
  const TemporaryFolder folder;
  const std::string data = folder / "data", other = folder / "other", password = folder / "password";
  WriteFile(password, "a&b\n");
  RunningProgram first({ORVANE_SERVICE_PROGRAM, "--data", data, "--port", "0"});
  ASSERT_NO_FATAL_FAILURE(first.UntilItSays("(data in"));
  fs::copy(data, other, fs::copy_options::recursive);
  fs::permissions(other + "/ca/ca.key", fs::perms::others_read, fs::perm_options::add);
  const std::string port = first.output.substr(first.output.find("127.0.0.1:") + 10, 5);
  for (const auto& [option, value, code, error] :
       std::initializer_list<std::tuple<const char*, std::string, int, const char*>>{
           {"--help", "", 0, ""},
           {"--port", "70000", 2, "--port"},
           {"--demo-password-file", password, 2, "--demo-password-file"},
           {"--data", data, 1, "another service"},
           {"--data", other, 1, "Address already in use"},
           {"--data", other, 1, "warning: other users of this machine may read "}}) {
    const orvane_host::ChildResult result =
        orvane_host::RunChild({ORVANE_SERVICE_PROGRAM, "--port", port, option, value});
    EXPECT_EQ(result.status, code) << option << value;
    EXPECT_NE(result.errors.find(error), std::string::npos) << result.errors;
  }
}

}  // namespace
