#import "OHostController.h"

#import <EventLoop.h>
#include <signal.h>
#include <unistd.h>

#include "Console.h"
#import "OHostMenu.h"

using orvane_host::Complain;
using orvane_host::Describe;
using orvane_host::ExitStatus;
using orvane_host::Say;

namespace {

const NSTimeInterval kBeat = 0.1;
// One window of the plug-in may close an instant before the next one opens.
const int kQuietBeatsToEnd = 3;
// How long a plug-in may take to return from its windows once they were closed: ten seconds.
const int kBeatsToQuit = 100;

volatile sig_atomic_t asked_to_end = 0;

void HandleSignal(int) {
  asked_to_end = 1;
}

NSString *ToString(const std::string &text) {
  NSString *string = [NSString stringWithUTF8String:text.c_str()];
  return string ? string : @"(a text that is not UTF-8)";
}

// Passes on what the session tells.
class Listener : public orvane_host::SessionListener {
 public:
  explicit Listener(OHostController *controller) : controller_(controller) {}
  void EventRaised(const orvane_host::ErrorEvent &event) override { [controller_ eventRaised:event]; }
  void RenderStarted(const std::string &, const std::string &preset) override { [controller_ renderStarted:preset]; }
  bool RenderProgressed(double done) override { return [controller_ renderProgressed:done]; }
  void RenderEnded(const orvane_host::RenderResult &result) override { [controller_ renderEnded:result]; }

 private:
  OHostController *controller_;  // outlives the session
};

}  // namespace

@implementation OHostController

- (instancetype)initWithOptions:(const orvane_host::Options &)options sequence:(const orvane_host::Sequence &)sequence {
  if ((self = [super init])) {
    _options = options;
    _sequence = sequence;
    signal(SIGTERM, HandleSignal);
    signal(SIGINT, HandleSignal);
  }
  return self;
}

- (void)dealloc {
  [[NSNotificationCenter defaultCenter] removeObserver:self];
  [_heartbeat invalidate];
  [_mainWindow release];
  [_progress release];
  [super dealloc];
}

#pragma mark Start

- (void)applicationWillFinishLaunching:(NSNotification *)notification {
  _exportMenu = OHostInstallMenu(self, @selector(quit:));
}

- (void)applicationDidFinishLaunching:(NSNotification *)notification {
  _mainWindow = [[OHostMainWindow alloc] initWithSequence:_sequence delegate:self];
  _progress = [[OHostRenderProgress alloc] init];
  // AppKit does so only when the window has come to the front, which changes its height below the first click.
  [[_mainWindow window] setMenu:[NSApp mainMenu]];
  [[_mainWindow window] makeKeyAndOrderFront:nil];
  [self startPlugins];
  _heartbeat = [NSTimer timerWithTimeInterval:kBeat target:self selector:@selector(beat:) userInfo:nil repeats:YES];
  // In the modal modes, too: the plug-in's windows run modal loops.
  for (NSString *mode in EventLoopModes()) {
    [[NSRunLoop currentRunLoop] addTimer:_heartbeat forMode:mode];
  }
  NSNotificationCenter *center = [NSNotificationCenter defaultCenter];
  for (NSString *change in @[ NSWindowDidBecomeKeyNotification, NSWindowDidBecomeMainNotification ]) {
    [center addObserver:self selector:@selector(keepMenuToMainWindow:) name:change object:nil];
  }
  if (_options.export_at_once) [OHostApplication postOrder:OHostOrderExport data:0];
}

// With its menus in windows AppKit gives the application's menu to every window that comes to the front. The plug-in's
// windows have none.
- (void)keepMenuToMainWindow:(NSNotification *)notification {
  NSWindow *window = [notification object];
  if (window != [_mainWindow window] && !OHostIsMenuWindow(window) && [window menu]) [window setMenu:nil];
}

- (void)startPlugins {
  _listener = std::make_unique<Listener>(self);
  _session = std::make_unique<orvane_host::HostSession>(_sequence, _listener.get());
  _session->SetRenderFault(_options.fault);
  _plugins = orvane_host::LoadPlugins(*_session, _options);
  if (_plugins.empty() && (_options.export_at_once || !_options.plugin.empty())) {
    [self endWithStatus:ExitStatus::kPluginNotLoaded];
  }
  NSMutableArray *names = [NSMutableArray array];
  for (size_t i = 0; i < _plugins.size(); ++i) {
    NSString *name = ToString(_session->DisplayName(_plugins[i]));
    [names addObject:name];
    OHostAddExportItem(_exportMenu, name, static_cast<NSInteger>(i), self, @selector(exportTimeline:));
  }
  NSString *list = [names componentsJoinedByString:@", "];
  [_mainWindow tell:[names count] ? [NSString stringWithFormat:@"Ready. Choose File > Export > %@", list]
                                  : @"No plug-in was found; there is nothing to export with."];
}

#pragma mark Exports

- (IBAction)exportTimeline:(id)sender {
  [self exportWithPlugin:static_cast<size_t>([sender tag])];
}

- (void)exportWithPlugin:(size_t)index {
  if (_quitting || index >= _plugins.size()) return;
  [_mainWindow tell:@"Exporting..."];
  const csSDK_int32 answer = _session->ExportTimeline(_plugins[index]);
  Say("export answered " + std::to_string(answer));
  NSString *outcome = ToString(TextOf(_session->Outcome()));
  [_mainWindow tell:[NSString stringWithFormat:@"The export answered %d: %@.", answer, outcome]];
  _exportAnswered = YES;
  _quietBeats = 0;
}

- (void)eventRaised:(const orvane_host::ErrorEvent &)event {
  Say(Describe(event));
  [_mainWindow tell:[NSString stringWithFormat:@"%@: %@", ToString(event.title), ToString(event.text)]];
}

- (void)renderStarted:(const std::string &)preset {
  [_progress beginWithName:ToString(preset)];
}

- (BOOL)renderProgressed:(double)done {
  const BOOL goes_on = [_progress progress:done];
  return goes_on && !_quitting && !asked_to_end;
}

- (void)renderEnded:(const orvane_host::RenderResult &)result {
  [_progress end];
  switch (result.outcome) {
    case orvane_host::RenderOutcome::kRendered:
      Say(Describe(result.file));
      [_mainWindow tell:[@"Rendered " stringByAppendingString:ToString(result.file.path)]];
      break;
    case orvane_host::RenderOutcome::kCancelled:
      Complain("the render was cancelled");
      [_mainWindow tell:@"The render was cancelled."];
      break;
    case orvane_host::RenderOutcome::kFailed:
      Complain("the render failed: " + result.reason);
      [_mainWindow tell:[@"The render failed: " stringByAppendingString:ToString(result.reason)]];
      break;
  }
}

#pragma mark The end

- (IBAction)quit:(id)sender {
  _quitting = YES;
}

- (BOOL)windowShouldClose:(id)sender {
  _quitting = YES;
  return NO;  // it goes when the program ends
}

- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication *)application {
  return NO;
}

// Whether a window of the plug-in stands on the screen or in the dock.
- (BOOL)pluginWindowIsOpen {
  for (NSWindow *window in [NSApp windows]) {
    if (window == [_mainWindow window] || window == [_progress window]) continue;
    if (OHostIsMenuWindow(window)) continue;
    if ([window isVisible] || [window isMiniaturized]) return YES;
  }
  return NO;
}

- (void)beat:(NSTimer *)timer {
  if (asked_to_end) _quitting = YES;
  if (_quitting) {
    [self pressForTheEnd];
  } else if (_options.export_at_once && _exportAnswered) {
    const BOOL quiet = !_session->InCall() && ![NSApp modalWindow] && ![self pluginWindowIsOpen];
    _quietBeats = quiet ? _quietBeats + 1 : 0;
    if (_quietBeats >= kQuietBeatsToEnd) [OHostApplication postOrder:OHostOrderFinish data:0];
  }
}

// Closes the plug-in's modal windows one after the other, then ends. A window that is not modal, such as that of an
// upload, does not hold the end up.
- (void)pressForTheEnd {
  NSWindow *modal = [NSApp modalWindow];
  const bool follows_mouse = [[[NSRunLoop currentRunLoop] currentMode] isEqualToString:NSEventTrackingRunLoopMode];
  const bool free = !modal && !follows_mouse && !_session->InCall();
  if (free) {
    [OHostApplication postOrder:OHostOrderFinish data:0];
  } else if (++_quittingBeats > kBeatsToQuit) {
    Complain("the plug-in's windows could not be closed");
    fflush(nullptr);
    _exit(static_cast<int>(ExitStatus::kPluginError));
  } else if (follows_mouse) {
    OHostLetGoOfMouse();
  } else if (modal && modal != [_progress window]) {
    if ([modal styleMask] & NSClosableWindowMask) {
      [modal performClose:nil];
    } else {
      [NSApp stopModal];  // an alert
    }
    WakeEventLoop();
  }
}

- (void)handleOrder:(OHostOrder)order data:(NSInteger)data {
  if (order == OHostOrderExport) {
    [self exportWithPlugin:static_cast<size_t>(data)];
  } else if (!_session->InCall() && ![NSApp modalWindow]) {
    [self finish];
  }
}

- (void)finish {
  const BOOL unfinished = [self pluginWindowIsOpen];  // a plug-in may close it when it is shut down
  _session->Shutdown();
  Say("done");
  const ExitStatus outcome = _session->Outcome();
  [self endWithStatus:unfinished && outcome == ExitStatus::kExported ? ExitStatus::kUnfinished : outcome];
}

- (void)endWithStatus:(ExitStatus)status {
  Complain(TextOf(status));
  fflush(nullptr);
  const int code = static_cast<int>(status);
  // A plug-in with an open window may still work in the background, where it would use what exit() destroys.
  if ([self pluginWindowIsOpen]) _exit(code);
  _session.reset();
  exit(code);
}

@end
