#include "ExportFailure.h"

#import <Cocoa/Cocoa.h>

#import "DialogWindow.h"
#include "ExceptionGuard.h"
#include "ExportState.h"
#include "HostEvents.h"
#include "MainThread.h"
#include "PlatformString.h"
#include "WorkflowState.h"

// What happened and what to try. What exactly was thrown helps nobody but us, and is in the log.
static const char kAdvice[] =
    "The export to Orvane was stopped: something came that the plug-in cannot read. Check that this computer is online "
    "(the log-in page of a network may be in the way), then export again. If that does not help, install Orvane Vorrel "
    "again. The log tells the details.";

static void FailExportOnMainThread(const std::string &message) {
  NSLog(@"#orvanevorrel export failed: %@", FromUtf8(message));
  g_export.failed = true;
  if (g_export.activity == ExportState::Activity::kUpload) g_export.activity = ExportState::Activity::kNone;
  StopModalDialog();
  if (g_export.open) {
    g_export.open = false;  // also when the clean-up fails
    if (g_pCleanupFunc) g_pCleanupFunc();
  }
  ReportHostEvent(HostEventType::kError, "Orvane", kAdvice);
}

void FailExport(const std::string &message) noexcept {
  // Nothing is left to fall back to when the clean-up fails too; the message says so.
  RunOnMainThreadAndWait([&message] {
    std::string second_failure;
    if (!CatchExceptions([&message] { FailExportOnMainThread(message); }, &second_failure)) {
      NSLog(@"#orvanevorrel ending the export failed: %@", FromUtf8(second_failure));
    }
  });
}
