// Pop-up buttons as AppKit's. There, an arrow key opens the menu of the button that has the keyboard, an open menu gets
// every key, it is off the screen before the button's action is sent, and the button shows no check mark. GNUstep opens
// it with the space bar alone, leaves it open while Return presses the window's default button, takes it away when the
// action has ended, and draws the chosen item's check mark over its title.
#import <Cocoa/Cocoa.h>

#include "MethodReplacement.h"
#include "Replacements.h"

namespace {

using SendEvent = void (*)(id, SEL, NSEvent *);
SendEvent original_send_event;

using DrawStateImage = void (*)(id, SEL, NSRect, NSView *);
DrawStateImage original_draw_state_image;

using SendAction = BOOL (*)(id, SEL, SEL, id, id);
SendAction original_send_action;

NSMenuView *MenuViewOf(NSPopUpButton *button) {
  return static_cast<NSMenuView *>([[button menu] menuRepresentation]);
}

NSPopUpButton *FocusedPopUp(NSWindow *window) {
  NSResponder *responder = [window firstResponder];
  return [responder isKindOfClass:[NSPopUpButton class]] ? static_cast<NSPopUpButton *>(responder) : nil;
}

bool IsArrow(NSEvent *event) {
  NSString *characters = [event charactersIgnoringModifiers];
  if ([characters length] != 1) return false;
  const unichar key = [characters characterAtIndex:0];
  return key == NSUpArrowFunctionKey || key == NSDownArrowFunctionKey;
}

// The same key press with other characters.
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
void ShowHighlightedItem(NSMenuView *menu_view) {
  NSWindow *window = [menu_view window];
  const NSInteger index = [menu_view highlightedItemIndex];
  if (![window isVisible] || index < 0) return;
  const NSRect item = [menu_view convertRect:[menu_view rectOfItemAtIndex:index] toView:nil];
  const CGFloat bottom = NSMinY([window frame]) + NSMinY(item);
  const NSRect screen = [[NSScreen mainScreen] visibleFrame];
  CGFloat shift = 0;
  if (bottom < NSMinY(screen)) shift = NSMinY(screen) - bottom;
  if (bottom + NSHeight(item) > NSMaxY(screen)) shift = NSMaxY(screen) - bottom - NSHeight(item);
  if (shift != 0) [window setFrameOrigin:NSMakePoint(NSMinX([window frame]), NSMinY([window frame]) + shift)];
}

void SendEventToOpenMenuFirst(id application, SEL selector, NSEvent *event) {
  NSPopUpButton *button = [event type] == NSKeyDown ? FocusedPopUp([event window]) : nil;
  if (button && [[MenuViewOf(button) window] isVisible]) {
    [button keyDown:event];
    ShowHighlightedItem(MenuViewOf(button));
  } else if (button && [button numberOfItems] > 0 && IsArrow(event)) {
    [button keyDown:WithCharacters(event, @" ")];
  } else {
    original_send_event(application, selector, event);
  }
}

BOOL CloseMenuAndSendAction(id application, SEL selector, SEL action, id target, id sender) {
  if ([sender isKindOfClass:[NSPopUpButton class]]) [[MenuViewOf(sender) window] orderOut:nil];
  return original_send_action(application, selector, action, target, sender);
}

void DrawStateImageInMenusAlone(id cell, SEL selector, NSRect frame, NSView *view) {
  if (![cell isKindOfClass:[NSPopUpButtonCell class]]) original_draw_state_image(cell, selector, frame, view);
}

}  // namespace

const Replacement replacement([] {
  original_send_event = ReplaceInstanceMethod<SendEvent>("NSApplication", "sendEvent:", SendEventToOpenMenuFirst);
  original_send_action =
      ReplaceInstanceMethod<SendAction>("NSApplication", "sendAction:to:from:", CloseMenuAndSendAction);
  original_draw_state_image = ReplaceInstanceMethod<DrawStateImage>(
      "NSMenuItemCell", "drawStateImageWithFrame:inView:", DrawStateImageInMenusAlone);
});
