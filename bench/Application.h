// The application that a benchmark of the windows runs in.
#pragma once

#include <functional>

namespace bench {

/// Runs the body inside a running application, with the look of the host and the resources of the built bundle, and
/// ends the process: status 0, or 1 when the body throws an exception, whose text goes to standard error. Main thread.
[[noreturn]] void RunInApplication(const std::function<void()>& body);

/// Handles events and timers until the condition, asked after each event and ten times a second, holds. Throws
/// std::runtime_error when that takes longer than so many seconds. Main thread.
void RunMainLoopUntil(const std::function<bool()>& condition, double seconds);

}  // namespace bench
