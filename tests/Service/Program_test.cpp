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

}  // namespace
