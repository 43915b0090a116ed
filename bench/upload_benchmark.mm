// The upload through the plug-in's own windows, against the program curl on the same service.
//
// Usage: upload_benchmark [--quick]
// Prints lines for scripts/bench's table. It needs a display, and a home and temporary folder of its own.
#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "Application.h"
#include "CurlProgram.h"
#include "Figure.h"
#include "MainLoopWatch.h"
#include "PluginUpload.h"
#include "ProcessMemory.h"
#include "SinkProcess.h"
#include "WorkflowState.h"

namespace bench {

namespace {

constexpr long long kMebibyte = 1024 * 1024;
constexpr double kMillisecondsPerSecond = 1000;

constexpr double kWantedGrowthMebibytes = 8;
constexpr double kWantedWaitMilliseconds = 16;

struct Sizes {
  long long upload = 1024 * kMebibyte;
  long long memoryUpload = 4096 * kMebibyte;
  int rounds = 7;
};

Sizes QuickSizes() {
  Sizes sizes;
  sizes.upload = 128 * kMebibyte;
  sizes.memoryUpload = 512 * kMebibyte;
  sizes.rounds = 3;
  return sizes;
}

std::string SizeText(long long bytes) {
  return bytes % (1024 * kMebibyte) == 0 ? std::to_string(bytes / (1024 * kMebibyte)) + " GiB"
                                         : std::to_string(bytes / kMebibyte) + " MiB";
}

std::string Milliseconds(double seconds) {
  return Text(seconds * kMillisecondsPerSecond, 1, "ms");
}

// The memory of one long upload, the first of the process.
void MeasureLongUpload(OrvaneProjectsAPI &client, const Sizes &sizes, const std::string &folder) {
  MakeUploadFile(folder, sizes.memoryUpload);
  PluginUpload upload(client);
  ResetPeak();
  const long long before = ResidentBytes();
  upload.Run();
  const double growth = static_cast<double>(PeakResidentBytes() - before) / kMebibyte;
  Print({"memory growth, " + SizeText(sizes.memoryUpload) + " upload", Text(growth, 1, "MiB"),
         "from " + Text(static_cast<double>(before) / kMebibyte, 1, "MiB"), Text(growth, 1, "MiB"), "8 MiB at most",
         growth <= kWantedGrowthMebibytes, "peak over what was in use before the window opened"});
}

struct Speed {
  std::vector<double> ours;
  std::vector<double> whole;
  std::vector<double> transfer;
};

double MeasureOneUpload(OrvaneProjectsAPI &client) {
  RestoreUploadFile();
  PluginUpload upload(client);
  return upload.Run();
}

// What the service received must be the same for both.
void CheckBodies(const SinkProcess &sink, OrvaneProjectsAPI &client) {
  const long long begin = sink.Statistics().bodyBytes;
  MeasureOneUpload(client);
  const long long middle = sink.Statistics().bodyBytes;
  RestoreUploadFile();
  UploadWithCurl(sink);
  const long long end = sink.Statistics().bodyBytes;
  if (end - middle != middle - begin) throw std::runtime_error("curl does not send the same form");
}

void MeasureSpeed(const SinkProcess &sink, OrvaneProjectsAPI &client, const Sizes &sizes) {
  CheckBodies(sink, client);
  Speed speed;
  for (int round = 0; round < sizes.rounds; ++round) {
    speed.ours.push_back(MeasureOneUpload(client));
    RestoreUploadFile();
    const CurlTimes curl = UploadWithCurl(sink);
    speed.whole.push_back(curl.whole);
    speed.transfer.push_back(curl.transfer);
  }
  const double ours = Median(speed.ours);
  const auto print = [&sizes, ours](const std::string &name, double theirs, const std::string &remark) {
    Print({name, Milliseconds(ours), Milliseconds(theirs), Text(ours / theirs, 3), "1 at most", ours <= theirs,
           remark + Text(static_cast<double>(sizes.upload) / kMebibyte / ours, 0, "MiB/s")});
  };
  print("upload of " + SizeText(sizes.upload) + ", curl -F", Median(speed.whole), "until the program's end; ");
  print("upload of " + SizeText(sizes.upload) + ", its transfer", Median(speed.transfer), "curl's own clock; ");
}

// The waits for the main loop while the action runs.
template <typename Action>
double LongestWait(Action action, double *percentile) {
  MainLoopWatch watch;
  action();
  watch.Stop();
  *percentile = watch.Percentile99();
  return watch.Longest();
}

// While curl uploads, the main loop has nothing to do, but as little of the processors as while the plug-in does.
void RunLoopWhileCurlUploads(const SinkProcess &sink) {
  RestoreUploadFile();
  orvane_host::ChildProcess curl(CurlUploadArguments(sink));
  std::string output;
  std::string errors;
  RunMainLoopUntil([&] { return !curl.Read(0, output, errors); }, 600);
  if (curl.Wait() != 0) throw std::runtime_error("curl failed: " + errors);
}

void MeasureMainLoop(const SinkProcess &sink, OrvaneProjectsAPI &client, const Sizes &sizes) {
  std::vector<double> ours, idle, curl;
  double percentile = 0, unused = 0;
  for (int round = 0; round < sizes.rounds; ++round) {
    RestoreUploadFile();
    double seconds = 0;
    ours.push_back(LongestWait([&] { seconds = MeasureOneUpload(client); }, &percentile));
    curl.push_back(LongestWait([&] { RunLoopWhileCurlUploads(sink); }, &unused));
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    idle.push_back(LongestWait(
        [&] { RunMainLoopUntil([end] { return std::chrono::steady_clock::now() >= end; }, seconds + 10); }, &unused));
  }
  const double longest = *std::max_element(ours.begin(), ours.end());
  const double noise = *std::max_element(curl.begin(), curl.end());
  Print({"longest wait for the main loop", Milliseconds(longest), Milliseconds(noise), Milliseconds(longest),
         "16 ms at most", longest * kMillisecondsPerSecond <= kWantedWaitMilliseconds,
         "median of the uploads " + Milliseconds(Median(ours)) + ", 99 of 100 waits " + Milliseconds(percentile) +
             "; other: with an idle window while curl uploads; idle machine: " +
             Milliseconds(*std::max_element(idle.begin(), idle.end()))});
}

void Measure(const Sizes &sizes, const std::string &folder) {
  g_prj = "1";
  g_fld = "_0_0";
  g_title = "Scene 12";
  g_desc = "Second cut.";
  g_tags = {"rough cut", "night"};
  SinkProcess sink(folder);
  OrvaneProjectsAPI client;
  if (client.login("acme", "editor", "secret") != "success") throw std::runtime_error("the login failed");
  MeasureLongUpload(client, sizes, folder);
  MakeUploadFile(folder, sizes.upload);
  MeasureSpeed(sink, client, sizes);
  MeasureMainLoop(sink, client, sizes);
}

}  // namespace

}  // namespace bench

int main(int argc, char **argv) {
  const bool quick = argc > 1 && std::strcmp(argv[1], "--quick") == 0;
  bench::RunInApplication([quick] {
    bench::Measure(quick ? bench::QuickSizes() : bench::Sizes(), std::filesystem::temp_directory_path());
  });
}
