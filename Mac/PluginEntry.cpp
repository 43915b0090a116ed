// The one function that the module exports.
#include "ExceptionGuard.h"
#include "ExportController.h"
#include "ExportFailure.h"
#include "ExportLifetime.h"
#include "WorkflowState.h"

namespace {

constexpr csSDK_int32 kUnknownSelector = -100;

csSDK_int32 Dispatch(csSDK_int32 selector, ecStdParms* stdParms, void* param) {
  switch (selector) {
    case ecSelStartup:
      return ecStartup(stdParms, static_cast<ExportControllerInitRec*>(param));
    case ecSelExportTimeline:
      return ecExportTimeline(stdParms, static_cast<ExportControllerTimelineInfoRec*>(param));
    case ecSelShutdown:
      return ecShutdown(stdParms);
    default:
      return kUnknownSelector;
  }
}

}  // namespace

// The host's headers may leave the visibility to the compiler's options, which hide everything else.
extern "C" __attribute__((visibility("default"))) csSDK_int32 xExportControllerEntry(csSDK_int32 selector,
                                                                                     ecStdParms* stdParms, void* param);

// The host calls it with a selector and that selector's record. Returns the handler's status, -1 when the plug-in
// itself failed, and -100 for a selector that it does not know. Nothing is thrown out of it. [main-thread]
PREMPLUGENTRY xExportControllerEntry(csSDK_int32 selector, ecStdParms* stdParms, void* param) {
  g_pFailureFunc = FailExport;
  const unsigned failures_before = ExportLifetime::Failures();
  csSDK_int32 result = kOwnFailure;
  RunGuarded([&] { result = Dispatch(selector, stdParms, param); });
  // A window that failed has ended its modal loop, and the handler has returned as if the user had closed it.
  return ExportLifetime::Failures() == failures_before ? result : kOwnFailure;
}
