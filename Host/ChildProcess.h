// A program that runs beside this one.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace orvane_host {

/// The status of a child that others in this process reaped.
constexpr int kUnknownStatus = -1;

/// Runs a program from PATH without a shell. It reads nothing, its output arrives through pipes, and it ends with this
/// process. The destructor kills and reaps a child that still runs, so none is left behind. All objects belong to one
/// thread.
class ChildProcess {
 public:
  /// arguments[0] is the program. Throws std::system_error when it cannot be started for want of resources; a program
  /// that is not found exits with 127.
  explicit ChildProcess(const std::vector<std::string>& arguments);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// Waits up to timeout_ms for output and appends it to output and errors. Returns false once both have ended.
  bool Read(int timeout_ms, std::string& output, std::string& errors);

  /// Sends the child a signal. Wait() must still follow one that ends it.
  void Signal(int number);

  /// Waits for the end. Returns the exit status, 128 plus the signal that ended it, or kUnknownStatus.
  int Wait();

 private:
  pid_t pid_ = -1;
  int output_ = -1;
  int errors_ = -1;
};

/// What a program that ran to its end left.
struct ChildResult {
  int status = -1;
  std::string output;
  std::string errors;
};

/// Runs a program to its end.
ChildResult RunChild(const std::vector<std::string>& arguments);

}  // namespace orvane_host
