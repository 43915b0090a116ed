// The folders of a project through the plug-in's upload settings window, against a bare loop of the same requests.
//
// Usage: listing_benchmark [--quick]
// Prints lines for scripts/bench's table. It needs a display, and a home and temporary folder of its own.
#include <curl/curl.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <memory>
#include <stdexcept>

#include "Application.h"
#include "Figure.h"
#include "FolderTree.h"
#import "OrvaneUploadWindowController.h"
#include "PluginUpload.h"
#include "SinkProcess.h"
#include "WorkflowState.h"

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kWantedRatio = 1.1;
constexpr int kMostRoundsAfar = 7;

double SecondsSince(Clock::time_point begin) {
  return std::chrono::duration<double>(Clock::now() - begin).count();
}

size_t Append(char *data, size_t size, size_t count, void *text) {
  static_cast<std::string *>(text)->append(data, size * count);
  return size * count;
}

struct Project {
  NSString *name;
  std::string identifier;
  std::string distance;
};

// The requests of a listing one after the other, with nothing around them.
class BareLoop {
 public:
  explicit BareLoop(const std::string &project)
      : handle_(curl_easy_init(), curl_easy_cleanup), url_(ApiUrl("get_folders/" + project)) {
    for (const std::string &id : FoldersToAskFor()) {
      bodies_.push_back("auth_token=token&auth_key=key" + (id.empty() ? "" : "&folder_id=" + id));
    }
    curl_easy_setopt(handle_.get(), CURLOPT_URL, url_.c_str());
    curl_easy_setopt(handle_.get(), CURLOPT_WRITEFUNCTION, &Append);
    curl_easy_setopt(handle_.get(), CURLOPT_WRITEDATA, &answer_);
  }

  double Run() {
    const Clock::time_point begin = Clock::now();
    for (const std::string &body : bodies_) {
      answer_.clear();
      curl_easy_setopt(handle_.get(), CURLOPT_POSTFIELDS, body.c_str());
      if (curl_easy_perform(handle_.get()) != CURLE_OK) throw std::runtime_error("a bare request failed");
    }
    return SecondsSince(begin);
  }

  size_t Requests() const { return bodies_.size(); }

 private:
  std::unique_ptr<CURL, void (*)(CURL *)> handle_;
  std::string url_;
  std::vector<std::string> bodies_;
  std::string answer_;
};

// The window as the user has it before him.
OrvaneUploadWindowController *OpenWindow(OrvaneProjectsAPI &client) {
  OrvaneUploadWindowController *controller = [[OrvaneUploadWindowController alloc] initWithProjectsApiPointer:&client];
  [[controller orvaneUploadWindow] makeKeyAndOrderFront:nil];
  const Clock::time_point shown = Clock::now();
  RunMainLoopUntil([shown] { return SecondsSince(shown) > 0.5; }, 10);
  return controller;
}

double ListOnce(OrvaneUploadWindowController *controller, NSString *project) {
  [[controller inputProject] selectItemWithTitle:project];
  const Clock::time_point begin = Clock::now();
  [controller selectPrj:[controller inputProject]];
  const double seconds = SecondsSince(begin);
  if ([[controller inputFolder] numberOfItems] != kFolderCount + 1) {
    throw std::runtime_error("the window does not list every folder");
  }
  return seconds;
}

void CompareListings(const SinkProcess &sink, OrvaneUploadWindowController *controller, const Project &project,
                     int rounds) {
  BareLoop loop(project.identifier);
  const long long before = sink.Statistics().requests;
  ListOnce(controller, project.name);
  const long long between = sink.Statistics().requests;
  loop.Run();
  if (sink.Statistics().requests - between != between - before) throw std::runtime_error("the loops are not the same");
  std::vector<double> ours;
  std::vector<double> bare;
  for (int round = 0; round < rounds; ++round) {
    ours.push_back(ListOnce(controller, project.name));
    bare.push_back(loop.Run());
  }
  const double ratio = Median(ours) / Median(bare);
  const double overhead = Median(ours) - Median(bare);
  Print({"listing of " + std::to_string(kFolderCount) + " folders, " + project.distance,
         Text(Median(ours) * 1e3, 1, "ms"), Text(Median(bare) * 1e3, 1, "ms"), Text(ratio, 2), "1.1 at most",
         ratio <= kWantedRatio,
         std::to_string(loop.Requests()) + " requests; the window adds " + Text(overhead * 1e3, 1, "ms") + " in all"});
}

// Login, settings and upload of one export. The requests of a listing and of an upload, with what comes before.
void CountConnections(const SinkProcess &sink, const std::string &folder) {
  const long long before = sink.Statistics().connections;
  MakeUploadFile(folder, 1024 * 1024);
  {
    OrvaneProjectsAPI client;
    if (client.login("acme", "editor", "secret") != "success") throw std::runtime_error("the login failed");
    OrvaneUploadWindowController *controller = OpenWindow(client);
    ListOnce(controller, @"Near");
    [[controller inputFolder] selectItemAtIndex:1];
    [controller selectFld:[controller inputFolder]];
    [[controller orvaneUploadWindow] orderOut:nil];
    PluginUpload(client).Run();
    [controller release];
  }
  const long long connections = sink.Statistics().connections - before;
  Print({"TCP connections of an export", std::to_string(connections), "", std::to_string(connections), "1",
         connections == 1, "login, lists, upload"});
}

void Measure(int rounds, const std::string &folder) {
  SinkProcess sink(folder);
  CountConnections(sink, folder);
  OrvaneProjectsAPI client;
  if (client.login("acme", "editor", "secret") != "success") throw std::runtime_error("the login failed");
  OrvaneUploadWindowController *controller = OpenWindow(client);
  CompareListings(sink, controller, {@"Near", "near", "answered at once"}, rounds);
  CompareListings(sink, controller, {@"Far", "far", "answered after 5 ms"}, std::min(rounds, kMostRoundsAfar));
  [controller release];
}

}  // namespace

}  // namespace bench

int main(int argc, char **argv) {
  const bool quick = argc > 1 && std::strcmp(argv[1], "--quick") == 0;
  bench::RunInApplication([quick] { bench::Measure(quick ? 5 : 31, std::filesystem::temp_directory_path()); });
}
