#include "ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace orvane_host {

namespace {

std::array<int, 2> MakePipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category(), "pipe");
  return ends;
}

void Close(int& descriptor) {
  if (descriptor >= 0) close(descriptor);
  descriptor = -1;
}

// GNUstep's task class installs a handler after whose signal the run loop reaps every child of the process, not only
// its own. An exit status would be lost to it whenever events are handled while a child runs, so the handler stays away
// for that time, and is told once at the end.
class ChildSignal {
 public:
  static void TakeOver() {
    if (users++ > 0) return;
    struct sigaction standard = {};
    standard.sa_handler = SIG_DFL;
    sigaction(SIGCHLD, &standard, &before);
  }
  static void GiveBack() {
    if (--users > 0) return;
    sigaction(SIGCHLD, &before, nullptr);
    if (before.sa_handler != SIG_DFL && before.sa_handler != SIG_IGN) raise(SIGCHLD);
  }

 private:
  static int users;
  static struct sigaction before;
};

int ChildSignal::users = 0;
struct sigaction ChildSignal::before;

// Runs between fork and exec, where only calls that are safe in a signal handler are allowed.
[[noreturn]] void BecomeProgram(char* const* arguments, int output, int errors, pid_t parent) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(127);  // the parent ended before the line above
  const int nothing = open("/dev/null", O_RDONLY);
  dup2(nothing, STDIN_FILENO);
  dup2(output, STDOUT_FILENO);
  dup2(errors, STDERR_FILENO);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  execvp(arguments[0], arguments);
  _exit(127);
}

// Appends what is there; closes the descriptor at its end.
void Drain(int& descriptor, std::string& text) {
  std::array<char, 4096> buffer{};
  const ssize_t count = read(descriptor, buffer.data(), buffer.size());
  if (count > 0) {
    text.append(buffer.data(), static_cast<size_t>(count));
  } else if (count == 0 || errno != EINTR) {
    Close(descriptor);
  }
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& arguments) {
  std::vector<char*> pointers;
  for (const std::string& argument : arguments) pointers.push_back(const_cast<char*>(argument.c_str()));
  pointers.push_back(nullptr);
  std::array<int, 2> output = MakePipe();
  std::array<int, 2> errors{-1, -1};
  const pid_t parent = getpid();
  try {
    errors = MakePipe();
    ChildSignal::TakeOver();
    pid_ = fork();
    if (pid_ < 0) ChildSignal::GiveBack();
    if (pid_ < 0) throw std::system_error(errno, std::generic_category(), "fork");
  } catch (...) {
    for (int* descriptor : {&output[0], &output[1], &errors[0], &errors[1]}) Close(*descriptor);
    throw;
  }
  if (pid_ == 0) BecomeProgram(pointers.data(), output[1], errors[1], parent);
  Close(output[1]);
  Close(errors[1]);
  output_ = output[0];
  errors_ = errors[0];
}

ChildProcess::~ChildProcess() {
  if (pid_ > 0) {
    Signal(SIGKILL);
    Wait();
  }
  Close(output_);
  Close(errors_);
}

bool ChildProcess::Read(int timeout_ms, std::string& output, std::string& errors) {
  std::array<pollfd, 2> waits{pollfd{output_, POLLIN, 0}, pollfd{errors_, POLLIN, 0}};
  if (poll(waits.data(), waits.size(), timeout_ms) > 0) {
    if (waits[0].revents) Drain(output_, output);
    if (waits[1].revents) Drain(errors_, errors);
  }
  return output_ >= 0 || errors_ >= 0;
}

void ChildProcess::Signal(int number) {
  if (pid_ > 0) kill(pid_, number);
}

int ChildProcess::Wait() {
  int status = 0;
  pid_t reaped = -1;
  do {
    reaped = waitpid(pid_, &status, 0);
  } while (reaped < 0 && errno == EINTR);
  pid_ = -1;
  ChildSignal::GiveBack();
  if (reaped < 0) return kUnknownStatus;
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

ChildResult RunChild(const std::vector<std::string>& arguments) {
  ChildResult result;
  ChildProcess child(arguments);
  while (child.Read(-1, result.output, result.errors)) {
  }
  result.status = child.Wait();
  return result;
}

}  // namespace orvane_host
