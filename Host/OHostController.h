#import <AppKit/AppKit.h>

#include <memory>
#include <vector>

#include "HostSession.h"
#import "OHostApplication.h"
#import "OHostMainWindow.h"
#import "OHostRenderProgress.h"
#include "Options.h"

/// The application's delegate: opens the window, loads the plug-ins, runs their exports and ends the program. It ends
/// the process with the status of ExitStatus.h. Main thread.
@interface OHostController : NSObject <OHostOrderHandler> {
  orvane_host::Options _options;
  orvane_host::Sequence _sequence;
  std::unique_ptr<orvane_host::SessionListener> _listener;
  std::unique_ptr<orvane_host::HostSession> _session;
  std::vector<size_t> _plugins;
  OHostMainWindow *_mainWindow;
  OHostRenderProgress *_progress;
  NSMenu *_exportMenu;
  NSTimer *_heartbeat;
  BOOL _exportAnswered;
  BOOL _quitting;
  int _quietBeats;
  int _quittingBeats;
}

- (instancetype)initWithOptions:(const orvane_host::Options &)options sequence:(const orvane_host::Sequence &)sequence;

/// What the session's listener calls, from within a call to the plug-in.
- (void)eventRaised:(const orvane_host::ErrorEvent &)event;
- (void)renderStarted:(const std::string &)preset;
- (BOOL)renderProgressed:(double)done;
- (void)renderEnded:(const orvane_host::RenderResult &)result;

/// Ends the program as soon as the plug-in's windows allow it: they are closed as their close buttons would, and a
/// render is cancelled.
- (IBAction)quit:(id)sender;

@end
