// The boundary to frames that are not ours: the host's, AppKit's and dispatch's. Nothing may be thrown into them.
#pragma once

#include <functional>
#include <string>

/// Runs the body. When it throws, C++ or Objective-C, g_pFailureFunc is told the exception's message; without that hook
/// the message goes to the system's log. Returns whether the body came to its end. [any-thread]
bool RunGuarded(const std::function<void()>& body) noexcept;

/// Runs the body and catches both kinds of exceptions. Returns whether it came to its end, and if not the exception's
/// message in *message. [any-thread]
bool CatchExceptions(const std::function<void()>& body, std::string* message) noexcept;

/// The same for a body that raises no Objective-C exception. [any-thread]
bool CatchCppExceptions(const std::function<void()>& body, std::string* message);
