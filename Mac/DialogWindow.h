// A window that a key can close.
#pragma once

#import <Cocoa/Cocoa.h>

/// Closes on Escape as by its close button: its delegate is asked and told. Without a close button it takes Escape as
/// any window does. Main thread.
@interface DialogWindow : NSWindow
@end
