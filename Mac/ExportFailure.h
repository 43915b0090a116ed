// Ending an export that failed in the plug-in's own code.
#pragma once

#include <string>

/// Ends the running export: logs the message, ends a dialog of the plug-in's that runs modally, calls the clean-up hook
/// if the export is still open, and reports an error event to the host, which says what to try. A modal dialog of the
/// host is left alone. Off the main thread it waits until the main thread has done it. The guard's failure hook.
/// [any-thread]
void FailExport(const std::string& message) noexcept;
