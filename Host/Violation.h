// What happens when a plug-in breaks the rules of the interface.
#pragma once

#include <string>

namespace orvane_host {

/// Prints the sentence, which says what the plug-in did, and ends the process at once with the exit status 70. May be
/// called on any thread.
[[noreturn]] void ReportViolation(const std::string& what);

}  // namespace orvane_host
