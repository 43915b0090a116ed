#include "ExitStatus.h"

namespace orvane_host {

const char* TextOf(ExitStatus status) {
  switch (status) {
    case ExitStatus::kExported:
      return "the host knows of no failure";
    case ExitStatus::kUsage:
      return "the options are wrong";
    case ExitStatus::kUserCancelled:
      return "the export was cancelled in the plug-in's windows";
    case ExitStatus::kRenderFailed:
      return "the render failed or was cancelled";
    case ExitStatus::kPluginError:
      return "the plug-in reported an error";
    case ExitStatus::kPluginNotLoaded:
      return "no plug-in could be loaded and started";
    case ExitStatus::kUnfinished:
      return "a window of the plug-in still stood: what it was doing failed, or was not finished";
    case ExitStatus::kContractViolation:
      return "stopped because the plug-in broke the rules";
  }
  return "unknown";
}

}  // namespace orvane_host
