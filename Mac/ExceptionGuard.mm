#import <Cocoa/Cocoa.h>

#include "ExceptionGuard.h"

#include <cstdio>

#include "ExportLifetime.h"
#include "HostEvents.h"
#include "MainThread.h"
#include "PlatformString.h"
#include "WorkflowState.h"

namespace {

void StopModalWindow() {
  NSWindow *window = [NSApp modalWindow];
  if (!window) return;
  [NSApp stopModal];
  [window orderOut:nil];
}

void FailExportOnMainThread(const std::string &message) {
  fprintf(stderr, "[orvanevorrel: export failed: %s]\n", message.c_str());
  ExportLifetime::CountFailure();
  ExportLifetime::SetUploadIsRunning(false);
  StopModalWindow();
  if (ExportLifetime::IsOpen()) {
    ExportLifetime::Close();
    if (g_pCleanupFunc) g_pCleanupFunc();
  }
  ReportHostEvent(HostEventType::kError, "Orvane", "The export to Orvane failed: " + message);
}

// The two kinds of exceptions need frames of their own: one frame cannot catch both.
bool CatchAnyException(const std::function<void()> &body, std::string *message) {
  @try {
    return CatchCppExceptions(body, message);
  } @catch (NSException *exception) {
    *message = ToUtf8([exception reason]);
  }
  return false;
}

}  // namespace

bool RunGuarded(const std::function<void()> &body) noexcept {
  std::string message;
  if (CatchAnyException(body, &message)) return true;
  FailExport(message);
  return false;
}

void FailExport(const std::string &message) noexcept {
  // Nothing is left to fall back to when the clean-up fails too; the message says so.
  std::string second_failure;
  const auto fail = [&message, &second_failure] {
    if (!CatchAnyException([&message] { FailExportOnMainThread(message); }, &second_failure)) {
      fprintf(stderr, "[orvanevorrel: ending the export failed: %s]\n", second_failure.c_str());
    }
  };
  RunOnMainThreadAndWait(fail);
}
