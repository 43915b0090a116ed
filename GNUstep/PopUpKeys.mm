// The keys of pop-up buttons. In AppKit an arrow key opens the menu of a pop-up button that has the keyboard, and an
// open menu gets every key. GNUstep opens it with the space bar alone and leaves it open while Return presses the
// window's default button.
#import <Cocoa/Cocoa.h>

#include "MethodReplacement.h"
#include "PopUpMenu.h"
#include "Replacements.h"

namespace {

using SendEvent = void (*)(id, SEL, NSEvent *);
SendEvent original_send_event;

NSPopUpButton *FocusedPopUp(NSWindow *window) {
  NSResponder *responder = [window firstResponder];
  return [responder isKindOfClass:[NSPopUpButton class]] ? static_cast<NSPopUpButton *>(responder) : nil;
}

bool IsOpen(NSPopUpButton *button) {
  return [PopUpMenuWindow(button) isVisible];
}

bool IsArrow(NSEvent *event) {
  NSString *characters = [event charactersIgnoringModifiers];
  if ([characters length] != 1) return false;
  const unichar key = [characters characterAtIndex:0];
  return key == NSUpArrowFunctionKey || key == NSDownArrowFunctionKey;
}

// The same key press with another character.
NSEvent *WithCharacters(NSEvent *event, NSString *characters) {
  return [NSEvent keyEventWithType:[event type]
                          location:[event locationInWindow]
                     modifierFlags:[event modifierFlags]
                         timestamp:[event timestamp]
                      windowNumber:[event windowNumber]
                           context:[event context]
                        characters:characters
       charactersIgnoringModifiers:characters
                         isARepeat:NO
                           keyCode:[event keyCode]];
}

// A menu that is higher than the screen moves so that the chosen item is seen.
void ShowHighlightedItem(NSPopUpButton *button) {
  NSWindow *window = PopUpMenuWindow(button);
  NSMenuView *menuView = static_cast<id>([[button menu] menuRepresentation]);
  const NSInteger index = [menuView highlightedItemIndex];
  if (![window isVisible] || index < 0) return;
  const NSRect item = [menuView convertRect:[menuView rectOfItemAtIndex:index] toView:nil];
  const CGFloat bottom = NSMinY([window frame]) + NSMinY(item);
  const NSRect screen = [[NSScreen mainScreen] visibleFrame];
  CGFloat shift = 0;
  if (bottom < NSMinY(screen)) shift = NSMinY(screen) - bottom;
  if (bottom + NSHeight(item) > NSMaxY(screen)) shift = NSMaxY(screen) - bottom - NSHeight(item);
  if (shift != 0) [window setFrameOrigin:NSMakePoint(NSMinX([window frame]), NSMinY([window frame]) + shift)];
}

void SendEventToOpenMenuFirst(id application, SEL selector, NSEvent *event) {
  NSPopUpButton *button = [event type] == NSKeyDown ? FocusedPopUp([event window]) : nil;
  if (button && IsOpen(button)) {
    [button keyDown:event];
    ShowHighlightedItem(button);
  } else if (button && [button numberOfItems] > 0 && IsArrow(event)) {
    [button keyDown:WithCharacters(event, @" ")];
  } else {
    original_send_event(application, selector, event);
  }
}

}  // namespace

void InstallPopUpKeys() {
  original_send_event = ReplaceInstanceMethod<SendEvent>("NSApplication", "sendEvent:", SendEventToOpenMenuFirst);
}
