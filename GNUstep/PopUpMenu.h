// The menu of a pop-up button.
#pragma once

#import <Cocoa/Cocoa.h>

/// The window that the button's menu is shown in; nil when it never was. Main thread.
inline NSWindow *PopUpMenuWindow(NSPopUpButton *button) {
  id menuView = [[button menu] menuRepresentation];
  return [menuView isKindOfClass:[NSView class]] ? [menuView window] : nil;
}
