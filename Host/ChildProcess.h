// A program that runs beside this one.
#pragma once

#include <gio/gio.h>

#include <memory>
#include <string>
#include <vector>

namespace orvane_host {

/// Runs a program from PATH without a shell. It reads nothing, its output arrives through pipes, and it ends with this
/// process. The destructor kills and reaps a child that still runs, so none is left behind. All objects belong to one
/// thread.
class ChildProcess {
 public:
  /// arguments[0] is the program. Throws std::runtime_error when it cannot be started.
  explicit ChildProcess(const std::vector<std::string>& arguments);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// Waits up to timeout_ms for output, without end when that is negative, and appends it to output and errors. Returns
  /// false once both have ended.
  bool Read(int timeout_ms, std::string& output, std::string& errors);

  /// Sends the child a signal. Wait() must still follow one that ends it.
  void Signal(int number);

  /// Waits for the end. Returns the exit status, or 128 plus the signal that ended it.
  int Wait();

 private:
  struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
  };

  std::unique_ptr<GSubprocess, Unref> process_;
  int output_ = -1;  ///< descriptors, of the process; -1 when the stream has ended
  int errors_ = -1;
};

/// What a program that ran to its end left.
struct ChildResult {
  int status = -1;
  std::string output;
  std::string errors;
};

/// Runs a program to its end. Throws as ChildProcess does.
ChildResult RunChild(const std::vector<std::string>& arguments);

}  // namespace orvane_host
