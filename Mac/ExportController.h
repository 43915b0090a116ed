// The plug-in's entry: what the host calls, and the hooks through which the windows end an export.
#pragma once

#include <string>

#include "PrSDKErrorSuite.h"
#include "PrSDKExportController.h"
#include "PrSDKExportControllerSuite.h"
#include "PrSDKSequenceInfoSuite.h"
#include "PrSDKTimeSuite.h"

/// The host's suites: null until start-up acquired them, and where the host does not have them. The host owns them.
extern const PrSDKExportControllerSuite* sExportControllerSuitePtr;
extern const PrSDKErrorSuite3* sErrorSuitePtr;
extern const PrSDKSequenceInfoSuite* sSequenceInfoSuitePtr;
extern const PrSDKTimeSuite* sTimeSuitePtr;

/// The one exported function. The host calls it on its main thread with a selector and that selector's record. Returns
/// the handler's status, -1 when the plug-in itself failed, and -100 for a selector that it does not know. Nothing is
/// thrown out of it.
PREMPLUGENTRY xExportControllerEntry(csSDK_int32 selector, ecStdParms* stdParms, void* param);

/// Start-up: names the export target in the zero-filled init record and acquires the suites. Always returns 0.
csSDK_int32 ecStartup(ecStdParms* stdParms, ExportControllerInitRec* initRec);

/// Shut-down: releases the suites that are held and ends an export that is still open. Always returns 0.
csSDK_int32 ecShutdown(ecStdParms* stdParms);

/// Exports one timeline: login, settings, rendering, and the start of the upload, which goes on after the return.
/// Returns 0 when the user cancelled or the host rendered the file, the host's status when it did not, and -1 for the
/// plug-in's own failures.
csSDK_int32 ecExportTimeline(ecStdParms* stdParms, ExportControllerTimelineInfoRec* timeline);

/// The hooks of an export. Progress comes on the upload's thread, in bytes; the others on the main thread.
void progressUpdate(double total, double now);
void showCompleteWindow(std::string link);

/// Ends an export: destroys the facade and empties the workflow's variables. Must be called once for an export.
void cleanup();
