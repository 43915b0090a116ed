// The entry: from a selector to its handler, with nothing thrown back at the host.
#include "ExceptionGuard.h"
#include "ExportController.h"
#include "ExportFailure.h"

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

PREMPLUGENTRY xExportControllerEntry(csSDK_int32 selector, ecStdParms* stdParms, void* param) {
  g_pFailureFunc = FailExport;
  csSDK_int32 result = kOwnFailure;
  RunGuarded([&] { result = Dispatch(selector, stdParms, param); });
  return result;
}
