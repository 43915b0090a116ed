// Finding and working the controls of visible windows. Main thread.
#pragma once

#import <Cocoa/Cocoa.h>

#include <string>

#include "WindowScript.h"

namespace window_test {

/// The visible window of that title; nil when there is none.
NSWindow *WindowTitled(NSString *title);

/// The texts of the window's fields and labels, a line each; empty for nil.
std::string TextsOf(NSWindow *window);

/// The visible alert panel, and the texts in it; nil and empty when there is none.
NSWindow *AlertPanel();
std::string AlertTexts();

/// Whether the window is the one that the innermost modal loop runs for.
bool IsModal(NSWindow *window);

/// The first button of that title in the window; nil when there is none.
NSButton *ButtonTitled(NSWindow *window, NSString *title);

/// Presses the button as a click does; its action runs before this returns, unless it opens a modal window.
void Press(NSButton *button);

/// Sends the window a press of the key with that character.
void PressKey(NSWindow *window, NSString *character, NSUInteger modifiers = 0);

/// Sends the window a mouse event at the point, given in the coordinates of its content.
void SendMouse(NSWindow *window, NSEventType type, NSPoint point);

/// The accessibility labels of what Tab reaches in the window, from the first control on, separated by "|"; a "?" for a
/// control without one; a button's title is its label. Ends editing.
std::string TabOrder(NSWindow *window);

/// Dismisses the alert panel by its button.
void DismissAlert();

/// Waits for an alert, dismisses it by its button, and returns its texts. For the thread of a script.
std::string DismissAlertWhenItComes(Script &actions);

/// Chooses the item of that title and sends the pop-up's action, as picking it from the menu does.
void Choose(NSPopUpButton *popUp, NSString *title);

/// What the window shows, without its frame, autoreleased. The window is visible.
NSBitmapImageRep *PictureOf(NSWindow *window);

}  // namespace window_test
