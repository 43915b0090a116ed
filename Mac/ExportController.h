// The handlers of the host's calls, and the hooks through which the windows end an export.
#pragma once

#include <string>

#include "PrSDKExportController.h"

/// What the host is answered when the plug-in itself failed.
constexpr csSDK_int32 kOwnFailure = -1;

/// Start-up: names the export target in the zero-filled init record and acquires the suites. Always returns 0.
/// [main-thread]
csSDK_int32 ecStartup(ecStdParms* stdParms, ExportControllerInitRec* initRec);

/// Shut-down: releases the suites that are held and ends an export that is left over. Always returns 0.
/// [main-thread]
csSDK_int32 ecShutdown(ecStdParms* stdParms);

/// Exports one timeline: login, settings, rendering, and the start of the upload, which goes on after the return.
/// Returns 0 when the user cancelled or the host rendered the file, the host's status when it did not, and
/// kOwnFailure, also while another export is running. [main-thread]
csSDK_int32 ecExportTimeline(ecStdParms* stdParms, ExportControllerTimelineInfoRec* timeline);

/// Hands the bytes to send and the bytes sent to the facade. The progress hook. [upload-queue] [export-open]
void progressUpdate(double total, double now);

/// Hands the uploaded file's link to the facade. The completion hook. [main-thread] [export-open]
void showCompleteWindow(std::string link);

/// Ends an export: destroys the facade and empties the workflow's variables. The clean-up hook; must be called once for
/// an export. [main-thread] [export-open]
void cleanup();
