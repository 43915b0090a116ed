#include "ExportFailure.h"

#import <Cocoa/Cocoa.h>

#include <cstdio>

#import "DialogWindow.h"
#include "ExceptionGuard.h"
#include "ExportLifetime.h"
#include "HostEvents.h"
#include "MainThread.h"
#include "WorkflowState.h"

static void FailExportOnMainThread(const std::string &message) {
  fprintf(stderr, "[orvanevorrel: export failed: %s]\n", message.c_str());
  ExportLifetime::CountFailure();
  ExportLifetime::SetUploadIsRunning(false);
  StopModalDialog();
  if (ExportLifetime::IsOpen()) {
    ExportLifetime::Close();
    if (g_pCleanupFunc) g_pCleanupFunc();
  }
  ReportHostEvent(HostEventType::kError, "Orvane", "The export to Orvane failed: " + message);
}

void FailExport(const std::string &message) noexcept {
  // Nothing is left to fall back to when the clean-up fails too; the message says so.
  RunOnMainThreadAndWait([&message] {
    std::string second_failure;
    if (!CatchExceptions([&message] { FailExportOnMainThread(message); }, &second_failure)) {
      fprintf(stderr, "[orvanevorrel: ending the export failed: %s]\n", second_failure.c_str());
    }
  });
}
