// Acting on windows in this process as a person would, while the code under test runs its modal loops.
#pragma once

#include <functional>

namespace window_test {

/// What a script does to the windows. The script has a thread of its own; all work is done on the main thread, between
/// two events, whether the main thread is in the main loop or in a modal one.
class Script {
 public:
  /// Runs the work on the main thread and waits for it. The work must not open a modal window: after ten seconds
  /// std::runtime_error is thrown, which RunWithScript reports.
  void OnMain(const std::function<void()>& work);

  /// Runs the work on the main thread and does not wait: for clicks that open modal windows.
  void Post(std::function<void()> work);

  /// Waits until the condition, asked on the main thread, holds. Throws std::runtime_error after ten seconds.
  void WaitFor(const char* what, const std::function<bool()>& condition);
};

/// Runs the body on the main thread, and the script on a thread of its own meanwhile. Returns when both have ended.
/// When the script fails, the test fails, and every modal loop of the body is ended.
void RunWithScript(const std::function<void()>& body, const std::function<void(Script&)>& script);

/// Goes round the main loop until the condition holds. Returns whether it did within ten seconds. Main thread.
bool SpinUntil(const std::function<bool()>& condition);

}  // namespace window_test
