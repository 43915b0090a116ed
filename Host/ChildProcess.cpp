#include "ChildProcess.h"

#include <gio/gunixinputstream.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace orvane_host {

namespace {

// Between fork and exec.
void EndWithParent(gpointer) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
}

int Descriptor(GInputStream* stream) {
  return g_unix_input_stream_get_fd(G_UNIX_INPUT_STREAM(stream));
}

// Appends what is there. Sets the descriptor to -1 at the end of the stream.
void Drain(int& descriptor, std::string& text) {
  std::array<char, 65536> buffer{};
  const ssize_t length = read(descriptor, buffer.data(), buffer.size());
  if (length > 0) {
    text.append(buffer.data(), static_cast<size_t>(length));
  } else {
    descriptor = -1;
  }
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& arguments) {
  // GNUstep's task class reaps every child of the process when this signal comes, and exit statuses would be lost.
  signal(SIGCHLD, SIG_DFL);
  std::vector<const char*> pointers;
  for (const std::string& argument : arguments) pointers.push_back(argument.c_str());
  pointers.push_back(nullptr);
  const std::unique_ptr<GSubprocessLauncher, Unref> launcher(g_subprocess_launcher_new(
      static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE | G_SUBPROCESS_FLAGS_STDERR_PIPE)));
  g_subprocess_launcher_set_child_setup(launcher.get(), EndWithParent, nullptr, nullptr);
  g_autoptr(GError) error = nullptr;
  process_.reset(g_subprocess_launcher_spawnv(launcher.get(), pointers.data(), &error));
  if (!process_) throw std::runtime_error(error->message);
  output_ = Descriptor(g_subprocess_get_stdout_pipe(process_.get()));
  errors_ = Descriptor(g_subprocess_get_stderr_pipe(process_.get()));
}

ChildProcess::~ChildProcess() {
  g_subprocess_force_exit(process_.get());
  Wait();
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
  g_subprocess_send_signal(process_.get(), number);
}

int ChildProcess::Wait() {
  g_subprocess_wait(process_.get(), nullptr, nullptr);
  if (g_subprocess_get_if_exited(process_.get())) return g_subprocess_get_exit_status(process_.get());
  return 128 + g_subprocess_get_term_sig(process_.get());
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
