// The program as it is started from a command line.
#include "RunningService.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

extern char** environ;

namespace {

namespace fs = std::filesystem;

/// A started program whose two outputs go to files.
class Program {
 public:
  Program(const fs::path& folder, std::vector<std::string> arguments) : out_(folder / "out"), error_(folder / "error") {
    arguments.insert(arguments.begin(), ORVANE_SERVICE_PROGRAM);
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    const int flags = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, out_.c_str(), flags, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, error_.c_str(), flags, 0600);
    EXPECT_EQ(posix_spawn(&pid_, ORVANE_SERVICE_PROGRAM, &actions, nullptr, pointers.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
  }

  ~Program() {
    if (pid_ <= 0) return;
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
  }

  void Signal(int number) const { kill(pid_, number); }

  /// Its exit code, or -1 if it does not end by itself.
  int ExitCode() {
    int status = 0;
    if (!Eventually([&] { return waitpid(pid_, &status, WNOHANG) == pid_; })) return -1;
    pid_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  std::string Out() const { return Content(out_); }
  std::string Error() const { return Content(error_); }

 private:
  static std::string Content(const fs::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  fs::path out_;
  fs::path error_;
  pid_t pid_ = 0;
};

TEST(ProgramTest, SaysWhenItIsReadyAndEndsOnSignals) {
  const TemporaryFolder folder;
  const std::string data = (folder.Path() / "data").string();
  std::string login;
  for (int number : {SIGTERM, SIGINT}) {
    Program program(folder.Path(), {"--data", data, "--port", "0"});
    ASSERT_TRUE(Eventually([&] { return program.Out().find("ready on https://127.0.0.1:") != std::string::npos; }))
        << program.Error();
    const std::string out = program.Out();
    EXPECT_NE(out.find(" (data in " + data + ")\n"), std::string::npos) << out;
    const bool has_login = out.find("demo login: subdomain acme, user editor, password ") != std::string::npos;
    EXPECT_EQ(has_login, number == SIGTERM) << "only at the first start: " << out;
    program.Signal(number);
    EXPECT_EQ(program.ExitCode(), 0);
  }
}

TEST(ProgramTest, TellsWrongUsageFromFailure) {
  const TemporaryFolder folder;
  const std::string data = (folder.Path() / "data").string();
  std::ofstream(folder.Path() / "file") << "not a folder";
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
                                   {{"--data", (folder.Path() / "file").string()}, 1, "file"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.arguments.back());
    Program program(folder.Path(), c.arguments);
    EXPECT_EQ(program.ExitCode(), c.code);
    EXPECT_NE(program.Error().find(c.error), std::string::npos) << program.Error();
  }
  Program first(folder.Path(), {"--data", data, "--port", "0"});
  ASSERT_TRUE(Eventually([&] { return first.Out().find("ready") != std::string::npos; }));
  const TemporaryFolder other;
  Program second(other.Path(), {"--data", data, "--port", "0"});
  EXPECT_EQ(second.ExitCode(), 1);
  EXPECT_NE(second.Error().find("another service"), std::string::npos) << second.Error();
}

}  // namespace
