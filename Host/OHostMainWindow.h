#import <AppKit/AppKit.h>

#include <string>

#include "Sequence.h"

/// The host's main window: the open sequence, and line by line what has happened. Main thread.
@interface OHostMainWindow : NSObject {
  NSWindow *_window;
  NSTextView *_log;
}

/// Makes the window without showing it; delegate is not retained.
- (instancetype)initWithSequence:(const orvane_host::Sequence &)sequence delegate:(id)delegate;

- (NSWindow *)window;

/// Adds a line.
- (void)tell:(NSString *)text;

@end
