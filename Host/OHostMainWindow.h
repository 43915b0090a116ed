#import <AppKit/AppKit.h>

#include <string>

#include "Sequence.h"

/// The host's main window: the open sequence, the plug-ins, and what has happened. Main thread.
@interface OHostMainWindow : NSObject {
  NSWindow *_window;
  NSTextField *_plugins;
  NSTextView *_log;
  NSTextField *_status;
}

/// Makes the window without showing it; delegate is not retained.
- (instancetype)initWithSequence:(const orvane_host::Sequence &)sequence delegate:(id)delegate;

- (NSWindow *)window;

/// Shows the names of the plug-ins.
- (void)showPlugins:(NSString *)text;

/// Shows the text in the status line and adds it to the log.
- (void)tell:(NSString *)text;

@end
