// The export workflow as the host and the windows see it: the entry, the handlers of the host's calls, and the hooks
// through which the windows end an export. With it come the workflow's variables, the suites, and the helpers for paths
// and times.
#pragma once

#include <string>

#include "ExportControllerPaths.h"
#include "ExportControllerTime.h"
#include "HostSuites.h"
#include "PrSDKExportController.h"
#include "WorkflowState.h"

/// What the host is answered when the plug-in itself failed.
constexpr csSDK_int32 kOwnFailure = -1;

/// The one function that the module exports. The host calls it with a selector and that selector's record. Returns the
/// handler's status, kOwnFailure when the plug-in itself failed, and -100 for a selector that it does not know. Nothing
/// is thrown out of it. The host's headers may leave the visibility to the compiler's options, which hide everything
/// else. [main-thread]
extern "C" __attribute__((visibility("default"))) csSDK_int32 xExportControllerEntry(csSDK_int32 selector,
                                                                                     ecStdParms* stdParms, void* param);

/// Start-up: names the export target in the zero-filled init record and acquires the suites. Always returns 0.
/// [main-thread]
csSDK_int32 ecStartup(ecStdParms* stdParms, ExportControllerInitRec* initRec);

/// Shut-down: releases the suites that are held and ends an export that is left over. Always returns 0.
/// [main-thread]
csSDK_int32 ecShutdown(ecStdParms* stdParms);

/// Exports one timeline: login, settings, rendering, and the start of the upload, which goes on after the return.
/// Returns 0 when the user cancelled or the host rendered the file, the host's status when it did not, and
/// kOwnFailure: also while another call of it has not returned, an upload runs, or the complete window is up. What an
/// earlier export has left is cleaned up first. [main-thread]
csSDK_int32 ecExportTimeline(ecStdParms* stdParms, ExportControllerTimelineInfoRec* timeline);

/// Hands the bytes to send and the bytes sent to the facade. The progress hook. [upload-queue] [export-open]
void progressUpdate(double total, double now);

/// Hands the uploaded file's link to the facade. The completion hook. [main-thread] [export-open]
void showCompleteWindow(std::string link);

/// Ends an export: destroys the facade and empties the workflow's variables. The clean-up hook; must be called once for
/// an export. [main-thread] [export-open]
void cleanup();
