// The boundary to frames that are not ours: the host's, AppKit's and dispatch's. Nothing may be thrown into them.
#pragma once

#include <functional>
#include <string>

/// Runs the body. What it throws, C++ or Objective-C, ends the running export as the plug-in's own failure
/// (FailExport). Returns whether the body came to its end. Any thread; throws nothing.
bool RunGuarded(const std::function<void()>& body) noexcept;

/// Runs the body and catches C++ exceptions alone; an Objective-C exception goes on to the caller. Returns whether the
/// body came to its end, and if not the exception's message in *message.
bool CatchCppExceptions(const std::function<void()>& body, std::string* message);

/// Ends the running export after a failure of our own: logs the message, stops the modal loop and orders its window
/// out, calls the clean-up hook if the export is still open, and reports an error event to the host. Any thread: off
/// the main thread it waits until the main thread has done it.
void FailExport(const std::string& message) noexcept;
