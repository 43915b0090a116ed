#include "PluginUpload.h"

#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>

#include "Application.h"
#include "ExportState.h"
#import "UploadStatusWindowController.h"
#include "WorkflowState.h"

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kUploadDeadlineSeconds = 600;

UploadStatusWindowController *controller = nil;
bool completed = false;
Clock::time_point completed_at;
std::string kept_file;

void Check(bool worked, const std::string &what) {
  if (!worked) throw std::runtime_error("cannot make the file to upload: " + what);
}

}  // namespace

PluginUpload::PluginUpload(OrvaneProjectsAPI &client) {
  completed = false;
  g_pUpdFunc = [](double total, double now) { [controller updateProgressBarWithTotal:total now:now]; };
  g_pCompleteFunc = [](std::string) {
    completed_at = Clock::now();
    completed = true;
  };
  g_pCleanupFunc = [] {};
  controller = [[UploadStatusWindowController alloc] initWithProjectsApiPointer:&client];
}

PluginUpload::~PluginUpload() {
  [controller release];
  controller = nil;
}

double PluginUpload::Run() {
  const Clock::time_point begin = Clock::now();
  [controller showWindow];
  RunMainLoopUntil([] { return completed || g_export.activity != ExportState::Activity::kUpload; },
                   kUploadDeadlineSeconds);
  if (!completed) throw std::runtime_error("the plug-in's upload failed");
  return std::chrono::duration<double>(completed_at - begin).count();
}

void MakeUploadFile(const std::string &folder, long long bytes) {
  kept_file = folder + "/film.mp4";
  g_fpath = folder + "/upload.mp4";
  unlink(kept_file.c_str());
  unlink(g_fpath.c_str());
  const int file = open(kept_file.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
  Check(file >= 0, kept_file);
  const bool sized = ftruncate(file, bytes) == 0;
  close(file);
  Check(sized, kept_file);
  RestoreUploadFile();
}

void RestoreUploadFile() {
  if (access(g_fpath.c_str(), F_OK) == 0) return;
  Check(link(kept_file.c_str(), g_fpath.c_str()) == 0, g_fpath);
}

}  // namespace bench
