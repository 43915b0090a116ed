// What happens when a plug-in breaks the rules of the interface.
#pragma once

#include <functional>
#include <string>

namespace orvane_host {

/// Receives a sentence that says what the plug-in did. May be called on any thread.
using ViolationHandler = std::function<void(const std::string& what)>;

/// Replaces the handler; an empty one brings back the default, which prints the sentence and ends the process at once
/// with the exit status 70. A handler that returns makes the offending call fail. Not to be called while a plug-in
/// runs.
void SetViolationHandler(ViolationHandler handler);

/// Hands the sentence to the handler.
void ReportViolation(const std::string& what);

}  // namespace orvane_host
