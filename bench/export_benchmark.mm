// A whole export of the built plug-in with nobody waiting, against rendering alone and curl alone.
//
// Usage: export_benchmark [--quick]
// Prints a line for scripts/bench's table. It needs a display, a keyring, a home and temporary folder of its own, and
// the installed presets.
#import <Cocoa/Cocoa.h>
#import <EventLoop.h>

#include <chrono>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include "Application.h"
#include "CurlProgram.h"
#include "Deployment.h"
#include "Figure.h"
#include "HostSession.h"
#import "PluginWindows.h"
#include "SinkProcess.h"
#include "WorkflowState.h"

using namespace window_test;

// Does in the plug-in's windows what a person would, as soon as they run modally.
@interface BenchPerson : NSObject {
 @public
  BOOL sawTheEnd;
}
- (void)act:(NSTimer *)timer;
@end

@implementation BenchPerson

- (void)act:(NSTimer *)timer {
  NSWindow *window = [NSApp modalWindow];
  NSString *title = [window title];
  if ([title isEqualToString:kLoginTitle] && [[PluginControl(title, @"inputSubdomain") stringValue] length] == 0) {
    LogIn("secret");
  } else if ([title isEqualToString:kUploadTitle] && [[PluginControl(title, @"inputTitle") stringValue] length] == 0) {
    ChooseProject(@"Near");
    ChooseFolder([PluginControl(title, @"inputFolder") itemTitleAtIndex:1]);
    Upload(@"Scene 12");
  } else if ([title isEqualToString:kCompleteTitle]) {
    [window performClose:nil];
    sawTheEnd = YES;
  }
}

@end

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kWantedSeconds = 0.5;
constexpr double kLongestExportSeconds = 300;
constexpr NSTimeInterval kLookSeconds = 0.005;

orvane_host::Sequence Film(double seconds) {
  orvane_host::Sequence sequence;
  sequence.width = 1920;
  sequence.height = 1080;
  sequence.seconds = seconds;
  return sequence;
}

template <typename Body>
double SecondsOf(const Body &body) {
  const Clock::time_point begin = Clock::now();
  body();
  return std::chrono::duration<double>(Clock::now() - begin).count();
}

// From the host's call to the clean-up.
double Export(orvane_host::HostSession &host) {
  BenchPerson *person = [[[BenchPerson alloc] init] autorelease];
  NSTimer *timer = [NSTimer timerWithTimeInterval:kLookSeconds
                                           target:person
                                         selector:@selector(act:)
                                         userInfo:nil
                                          repeats:YES];
  for (NSString *mode in EventLoopModes()) {
    [[NSRunLoop currentRunLoop] addTimer:timer forMode:mode];
  }
  const double seconds = SecondsOf([&host, person] {
    if (host.ExportTimeline() != 0) throw std::runtime_error("the export failed");
    RunMainLoopUntil([person] { return person->sawTheEnd; }, kLongestExportSeconds);
  });
  [timer invalidate];
  return seconds;
}

// Renders as the host does into a file that curl then sends.
double RenderAlone(const orvane_host::Sequence &sequence, const std::string &file) {
  const orvane_host::Preset preset = orvane_host::ReadPreset(ORVANE_PLUGIN_FOLDER "/" ORVANE_HIGH_PRESET);
  return SecondsOf([&] {
    if (Render(sequence, preset, file, [](double) { return true; }).outcome != orvane_host::RenderOutcome::kRendered) {
      throw std::runtime_error("rendering failed");
    }
  });
}

void Measure(int rounds, double film_seconds, const std::filesystem::path &folder) {
  const SinkProcess sink(folder);
  const orvane_host::Sequence sequence = Film(film_seconds);
  orvane_host::HostSession host(sequence);
  host.Load(ORVANE_BUNDLE_PATH);
  host.Startup();
  g_prj = "near";
  g_fld = "1";
  g_title = "Scene 12";
  g_fpath = folder / "alone.mp4";
  Export(host);  // the first one loads what the others find loaded
  std::vector<double> whole;
  std::vector<double> render;
  std::vector<double> send;
  for (int round = 0; round < rounds; ++round) {
    whole.push_back(Export(host));
    render.push_back(RenderAlone(sequence, g_fpath));
    send.push_back(UploadWithCurl(sink));
  }
  host.Shutdown();
  const double alone = Median(render) + Median(send);
  const double more = Median(whole) - alone;
  Print({"whole export of " + Text(film_seconds, 0, "s") + " of film", Text(Median(whole), 2, "s"), Text(alone, 2, "s"),
         Text(more, 2, "s more"), "0.5 s more at most", more <= kWantedSeconds,
         "from the host's call to the clean-up, nobody waiting; against rendering, " + Text(Median(render), 2, "s") +
             ", and curl, " + Text(Median(send), 2, "s")});
}

}  // namespace

}  // namespace bench

int main(int argc, char **argv) {
  const bool quick = argc > 1 && std::strcmp(argv[1], "--quick") == 0;
  bench::RunInApplication(
      [quick] { bench::Measure(quick ? 3 : 7, quick ? 2 : 10, std::filesystem::temp_directory_path()); });
}
