// How the program ends, for scripts.
#pragma once

namespace orvane_host {

enum class ExitStatus {
  kExported = 0,           ///< no failure that the host knows of, also when nothing was exported
  kUsage = 2,              ///< wrong options
  kUserCancelled = 3,      ///< the person closed or cancelled the plug-in's windows
  kRenderFailed = 4,       ///< the render failed or was cancelled
  kPluginError = 5,        ///< the plug-in reported an error or answered with a failure of its own
  kPluginNotLoaded = 6,    ///< no plug-in could be loaded, or its start-up failed
  kUnfinished = 7,         ///< a window of the plug-in still stood, as that of an upload that failed or runs
  kContractViolation = 70  ///< the plug-in broke the rules of the interface
};

/// A sentence without a full stop, for the person.
const char* TextOf(ExitStatus status);

}  // namespace orvane_host
