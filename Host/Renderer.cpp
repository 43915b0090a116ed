#include "Renderer.h"

#include <glib.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "ChildProcess.h"
#include "PartialFile.h"
#include "RenderCommand.h"

namespace orvane_host {

namespace {

namespace fs = std::filesystem;

// How long the loop waits for FFmpeg before it lets the caller look at its windows.
constexpr int kProgressIntervalMs = 30;

std::string Sha256(const std::string& path) {
  g_autoptr(GMappedFile) file = g_mapped_file_new(path.c_str(), FALSE, nullptr);
  if (!file) throw std::runtime_error("cannot read " + path);
  g_autoptr(GBytes) bytes = g_mapped_file_get_bytes(file);
  g_autofree gchar* digest = g_compute_checksum_for_bytes(G_CHECKSUM_SHA256, bytes);
  return digest;
}

// Reads FFmpeg's progress, lines such as "out_time_us=1200000", and removes the whole lines from output. Returns the
// last time in seconds, or before when there is none.
double TakeProgress(std::string& output, double before) {
  const std::string key = "out_time_us=";
  size_t line = 0;
  for (size_t end = output.find('\n'); end != std::string::npos; end = output.find('\n', line)) {
    // Before the first frame the value is "N/A", which reads as 0.
    if (output.compare(line, key.size(), key) == 0) before = std::atof(output.c_str() + line + key.size()) / 1e6;
    line = end + 1;
  }
  output.erase(0, line);
  return before;
}

// Runs FFmpeg until its output ends. Returns false when the caller cancelled; the child's end follows its object's.
bool RunToEnd(ChildProcess& child, double seconds, const ProgressFunction& progress, std::string& errors) {
  std::string output;
  double done = 0;
  bool running = true;
  while (running) {
    running = child.Read(kProgressIntervalMs, output, errors);
    done = TakeProgress(output, done);
    if (progress && !progress(std::clamp(done / seconds, 0.0, 1.0))) return false;
  }
  return true;
}

RenderResult Failed(const std::string& reason) {
  RenderResult result;
  result.reason = reason.substr(0, reason.find_last_not_of('\n') + 1);
  return result;
}

}  // namespace

RenderResult Render(const Sequence& sequence, const Preset& preset, const std::string& destination,
                    const ProgressFunction& progress, RenderFault fault) {
  const fs::path folder = fs::path(destination).parent_path();
  if (access(folder.c_str(), W_OK) != 0) {
    return Failed("cannot write into " + folder.string() + ": " + std::generic_category().message(errno));
  }
  const PartialFile partial(destination);
  std::vector<std::string> command = RenderCommand(sequence, preset, partial.path());
  // The last -c:v counts.
  if (fault == RenderFault::kRender) command.insert(command.end() - 1, {"-c:v", "no-such-encoder"});
  ProgressFunction report = progress;
  if (fault == RenderFault::kCancel) report = [](double) { return false; };

  try {
    RenderResult result;
    std::string errors;
    ChildProcess child(command);
    if (!RunToEnd(child, sequence.seconds, report, errors)) {
      result.outcome = RenderOutcome::kCancelled;
      return result;
    }
    const int status = child.Wait();
    if (status != 0) return Failed("ffmpeg failed (" + std::to_string(status) + "): " + errors);
    partial.MoveIntoPlace();
    result.outcome = RenderOutcome::kRendered;
    const auto [width, height] = EncodedSize(sequence, preset);
    result.file = {destination, fs::file_size(destination), Sha256(destination), width, height, sequence.seconds};
    return result;
  } catch (const std::exception& error) {
    return Failed(error.what());
  }
}

}  // namespace orvane_host
