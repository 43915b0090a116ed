// Pop-up buttons and menus as AppKit's. There, a click or an arrow key opens the menu of the button, an open menu gets
// every key, a click beside it closes it, it is off the screen before the button's action is sent, and the button shows
// no check mark. GNUstep opens it for as long as the mouse button is held, or with the space bar, leaves it open while
// Return presses the window's default button, takes it away when the action has ended, and draws the chosen item's
// check mark over its title. It also takes away the menu when what opens a further one is clicked on.
#import <Cocoa/Cocoa.h>
#import <GNUstepGUI/GSDisplayServer.h>

#include <algorithm>
#include <cmath>

#include "Replacements.h"

namespace {

constexpr CGFloat kClickRadius = 4;  // points that the mouse may move during a click

void (*original_send_event)(id, SEL, NSEvent *);
void (*original_draw_state_image)(id, SEL, NSRect, NSView *);
BOOL (*original_track_with_event)(id, SEL, NSEvent *);
void (*original_mouse_down)(id, SEL, NSEvent *);
NSEvent *(*original_next_event)(id, SEL, NSUInteger, NSDate *, NSString *, BOOL);
BOOL (*original_send_action)(id, SEL, SEL, id, id);

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

// A menu that is higher than the screen moves so that the chosen item is seen.
void ShowHighlightedItem(NSMenuView *menu_view) {
  NSWindow *window = [menu_view window];
  const NSInteger index = [menu_view highlightedItemIndex];
  if (![window isVisible] || index < 0) return;
  const NSRect item = [menu_view convertRect:[menu_view rectOfItemAtIndex:index] toView:nil];
  const CGFloat bottom = NSMinY([window frame]) + NSMinY(item);
  const NSRect screen = [[NSScreen mainScreen] visibleFrame];
  const CGFloat shift =
      std::max(NSMinY(screen) - bottom, 0.0) + std::min(NSMaxY(screen) - bottom - NSHeight(item), 0.0);
  [window setFrameOrigin:NSMakePoint(NSMinX([window frame]), NSMinY([window frame]) + shift)];
}

// Gives the open menu of the button its keys, and closes it when something else is clicked on. Returns whether it did.
bool GiveToOpenMenu(NSPopUpButton *button, NSEvent *event) {
  NSMenuView *menu_view = MenuViewOf(button);
  if (![[menu_view window] isVisible]) return false;
  if ([event type] == NSLeftMouseDown && [event window] != [menu_view window]) {
    [[button cell] dismissPopUp];
    return true;
  }
  if ([event type] != NSKeyDown) return false;
  [button keyDown:event];
  ShowHighlightedItem(menu_view);
  return true;
}

void SendEventToOpenMenuFirst(id application, SEL selector, NSEvent *event) {
  NSPopUpButton *button = FocusedPopUp([application keyWindow]);
  if (GiveToOpenMenu(button, event)) return;
  const bool opens = [event type] == NSKeyDown && [button numberOfItems] > 0 && IsArrow(event);
  if (opens) {
    [[button cell] attachPopUpWithFrame:[button bounds] inView:button];
  } else {
    original_send_event(application, selector, event);
  }
}

// The menu that follows the mouse, and the press that opened it as long as the mouse button is held; not owned. Main
// thread.
NSMenuView *followed_menu = nil;
NSEvent *press = nil;

// Where the mouse stood when a key was pressed: as long as it stays there, the keys move through the menu.
NSPoint rests_at;

// On the screen. The mouse itself may be elsewhere by the time the event is looked at.
NSPoint PlaceOf(NSEvent *event) {
  NSWindow *window = [event window];
  return window ? [window convertBaseToScreen:[event locationInWindow]] : [NSEvent mouseLocation];
}

void OpenMenu(id button, SEL selector, NSEvent *event) {
  press = event;
  original_mouse_down(button, selector, event);
  press = nil;
}

BOOL FollowMouse(id menu, SEL selector, NSEvent *event) {
  NSMenuView *outer = followed_menu;
  followed_menu = menu;
  rests_at = NSMakePoint(-1, -1);
  const BOOL ends = original_track_with_event(menu, selector, event);
  [GSServerForWindow([menu window]) releasemouse];
  followed_menu = outer;
  return ends;
}

// Whether the menu stays when the mouse button is let go: after the click that opened it, and on what opens another.
bool StaysOpen(NSEvent *release) {
  const NSPoint place = PlaceOf(release);
  const NSPoint pressed_at = press ? PlaceOf(press) : NSZeroPoint;
  const bool opened = press && std::hypot(place.x - pressed_at.x, place.y - pressed_at.y) < kClickRadius;
  press = nil;
  if (opened) {
    // From now on a click on the windows of other programs is one on this menu, too, and closes it.
    NSWindow *window = [followed_menu window];
    [GSServerForWindow(window) capturemouse:static_cast<int>([window windowNumber])];
  }
  for (NSMenuView *menu = followed_menu; menu && !opened; menu = [menu attachedMenuView]) {
    const NSInteger index = [menu isHorizontal] ? -1 : [menu highlightedItemIndex];
    if (index >= 0 && NSPointInRect(place, [[menu window] frame])) return [[[menu menu] itemAtIndex:index] hasSubmenu];
  }
  return opened;
}

// A release of the mouse button that chooses nothing.
NSEvent *ReleaseOfNothing(NSEvent *event) {
  for (NSMenuView *menu = followed_menu; menu; menu = [menu attachedMenuView]) [menu setHighlightedItemIndex:-1];
  return [NSEvent mouseEventWithType:NSLeftMouseUp
                            location:[event locationInWindow]
                       modifierFlags:0
                           timestamp:[event timestamp]
                        windowNumber:[event windowNumber]
                             context:[event context]
                         eventNumber:0
                          clickCount:1
                            pressure:0];
}

// While a menu follows the mouse it gets the keys, too, and not the window when the menu has gone.
NSEvent *NextEventForMenu(id application, SEL selector, NSUInteger mask, NSDate *until, NSString *mode, BOOL dequeue) {
  const bool follows = followed_menu && [mode isEqualToString:NSEventTrackingRunLoopMode];
  if (!follows) return original_next_event(application, selector, mask, until, mode, dequeue);
  for (;;) {
    NSEvent *event = original_next_event(application, selector, mask | NSKeyDownMask, until, mode, dequeue);
    const NSEventType type = [event type];
    bool taken = true;
    if (type == NSKeyDown) {
      rests_at = [NSEvent mouseLocation];
      taken = GiveToOpenMenu(FocusedPopUp([application keyWindow]), event);
    }
    if (!taken || ![[followed_menu window] isVisible]) return ReleaseOfNothing(event);
    const bool rests = type == NSPeriodic && NSEqualPoints([NSEvent mouseLocation], rests_at);
    if (type != NSKeyDown && !rests && (type != NSLeftMouseUp || !StaysOpen(event))) return event;
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

const Replacement send_event("NSApplication", "sendEvent:", SendEventToOpenMenuFirst, &original_send_event);
const Replacement send_action("NSApplication", "sendAction:to:from:", CloseMenuAndSendAction, &original_send_action);
const Replacement mouse_down("NSPopUpButton", "mouseDown:", OpenMenu, &original_mouse_down);
const Replacement track_with_event("NSMenuView", "trackWithEvent:", FollowMouse, &original_track_with_event);
const Replacement next_event("NSApplication", "nextEventMatchingMask:untilDate:inMode:dequeue:", NextEventForMenu,
                             &original_next_event);
const Replacement draw_state_image("NSMenuItemCell", "drawStateImageWithFrame:inView:", DrawStateImageInMenusAlone,
                                   &original_draw_state_image);
