// The upload through the plug-in's own windows, against the program curl on the same service.
//
// Usage: upload_benchmark [--quick]
// Prints lines for scripts/bench's table. It needs a display, and a home and temporary folder of its own.
#include <sys/resource.h>

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
  ResetPeakOfMemory();
  const long before = ProcessMemory("VmRSS");
  upload.Run();
  const double growth = static_cast<double>(ProcessMemory("VmHWM") - before) / 1024;
  Print({"memory growth, " + SizeText(sizes.memoryUpload) + " upload", Text(growth, 1, "MiB"),
         "from " + Text(static_cast<double>(before) / 1024, 1, "MiB"), Text(growth, 1, "MiB"), "8 MiB at most",
         growth <= kWantedGrowthMebibytes, "peak over what was in use before the window opened"});
}

struct Speed {
  std::vector<double> ours;
  std::vector<double> curl;
  // Of the processors, user and system.
  std::vector<double> ourProcessors;
  std::vector<double> curlProcessors;
};

// What this process, or its children that have ended, have had of the processors, in seconds.
double ProcessorSeconds(int who) {
  rusage usage = {};
  getrusage(who, &usage);
  const auto seconds = [](const timeval &time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

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

void PrintRatio(const std::string &name, double ours, double theirs, const std::string &remark) {
  Print({name, Milliseconds(ours), Milliseconds(theirs), Text(ours / theirs, 3), "1 at most", ours <= theirs, remark});
}

// An upload of that many bytes against the program curl, from its start to its end.
void MeasureSpeed(const SinkProcess &sink, OrvaneProjectsAPI &client, const std::string &folder, long long bytes,
                  int rounds) {
  MakeUploadFile(folder, bytes);
  CheckBodies(sink, client);
  Speed speed;
  for (int round = 0; round < rounds; ++round) {
    const double before = ProcessorSeconds(RUSAGE_SELF);
    speed.ours.push_back(MeasureOneUpload(client));
    speed.ourProcessors.push_back(ProcessorSeconds(RUSAGE_SELF) - before);
    RestoreUploadFile();
    const double between = ProcessorSeconds(RUSAGE_CHILDREN);
    speed.curl.push_back(UploadWithCurl(sink));
    speed.curlProcessors.push_back(ProcessorSeconds(RUSAGE_CHILDREN) - between);
  }
  const std::string name = "upload of " + SizeText(bytes);
  PrintRatio(name, Median(speed.ours), Median(speed.curl),
             Text(static_cast<double>(bytes) / kMebibyte / Median(speed.ours), 0, "MiB/s"));
  PrintRatio(name + ", of the processors", Median(speed.ourProcessors), Median(speed.curlProcessors),
             "user and system time");
}

// The longest wait for the main loop while the action runs, in seconds.
template <typename Action>
double LongestWait(Action action) {
  MainLoopWatch watch;
  action();
  return watch.Stop();
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
  std::vector<double> ours, curl;
  for (int round = 0; round < sizes.rounds; ++round) {
    ours.push_back(LongestWait([&] { MeasureOneUpload(client); }));
    curl.push_back(LongestWait([&] { RunLoopWhileCurlUploads(sink); }));
  }
  const double longest = *std::max_element(ours.begin(), ours.end());
  const double noise = *std::max_element(curl.begin(), curl.end());
  Print({"longest wait for the main loop", Milliseconds(longest), Milliseconds(noise), Milliseconds(longest),
         "16 ms at most", longest * kMillisecondsPerSecond <= kWantedWaitMilliseconds,
         "median of the uploads " + Milliseconds(Median(ours)) + "; other: with an idle window while curl uploads"});
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
  MeasureSpeed(sink, client, folder, 10 * kMebibyte, 5 * sizes.rounds);
  MeasureSpeed(sink, client, folder, 100 * kMebibyte, 3 * sizes.rounds);
  MeasureSpeed(sink, client, folder, sizes.upload, sizes.rounds);
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
