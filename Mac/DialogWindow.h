// The plug-in's windows, and running one modally.
#pragma once

#import <Cocoa/Cocoa.h>

#include <functional>

#include "RuntimeName.h"

/// Closes on Escape as by its close button: its delegate is asked and told. Without a close button it takes Escape as
/// any window does. Command with X, C, V, A and Z edits the text that has the keyboard, also in a host without an Edit
/// menu. A control that gets the keyboard is scrolled into view. Looks light whatever the system does, as its
/// background is. The class of every window of the plug-in. [main-thread]
ORV_RUNTIME_NAME("OrvDialogWindow")
@interface DialogWindow : NSWindow {
  NSUInteger reasonsToStay;
  BOOL closeWasAsked;
}
@end

/// Runs a controller's action in the guard. If the window is a DialogWindow and is told to close meanwhile, it stays
/// until the action, or the outermost of several, has ended: the controller is waiting for an answer, and would come
/// back to what the close has destroyed. The window is retained. [main-thread]
void RunAtWork(NSWindow *window, const std::function<void()> &action);

/// Before a request that makes the main thread wait: starts the spinner and draws its window as it is now, since
/// nothing is drawn meanwhile. [main-thread]
void ShowWaiting(NSProgressIndicator *spinner);

/// For windowWillClose: of a window that runs modally: ends its loop, and the export through the clean-up hook if the
/// user does not go on with it. [main-thread]
void DialogWillClose(bool endsExport);

/// Shows the window in the middle of the screen, with the keyboard, and runs it modally; takes it off the screen when
/// the modal loop has ended. Returns the loop's result. Throws std::runtime_error without a window, as when its
/// interface file is missing. [main-thread]
NSInteger RunModalDialog(NSWindow *window);

/// Ends the innermost modal loop and takes its window off the screen if that is a DialogWindow; a modal window of the
/// host's goes on. [main-thread]
void StopModalDialog();
