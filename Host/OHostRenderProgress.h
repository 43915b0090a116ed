#import <AppKit/AppKit.h>

/// The host's own progress while it renders: a small modal window with a bar and a Cancel button. Main thread.
@interface OHostRenderProgress : NSObject {
  NSWindow *_window;
  NSTextField *_label;
  NSProgressIndicator *_bar;
  NSModalSession _session;
  BOOL _cancelled;
}

- (NSWindow *)window;

/// Shows the window and starts its modal session. `name` is that of the preset.
- (void)beginWithName:(NSString *)name;

/// Moves the bar (0 to 1) and handles the events that wait. Returns NO once the person has cancelled.
- (BOOL)progress:(double)done;

/// Ends the modal session and hides the window. Does nothing when none was begun.
- (void)end;

@end
