#include "ExportLifetime.h"

namespace {
bool is_open = false;
bool is_left_over = false;
bool upload_is_running = false;
unsigned failures = 0;
}  // namespace

namespace ExportLifetime {

void Open() {
  is_open = true;
  is_left_over = false;
}
void Close() {
  is_open = false;
}
bool IsOpen() {
  return is_open;
}

void MarkLeftOver() {
  is_left_over = true;
}
bool IsLeftOver() {
  return is_open && is_left_over;
}

void SetUploadIsRunning(bool running) {
  upload_is_running = running;
}
bool UploadIsRunning() {
  return upload_is_running;
}

void CountFailure() {
  ++failures;
}
unsigned Failures() {
  return failures;
}

}  // namespace ExportLifetime
