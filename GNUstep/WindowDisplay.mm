// When windows are drawn. One from an interface file comes up black on X11 where nothing has been drawn yet: AppKit
// draws it whole. And AppKit draws the focus of a field or a text view when it comes and goes.
#import <Cocoa/Cocoa.h>

#include "Replacements.h"

namespace {

void (*original_make_key_and_order_front)(id, SEL, id);

void DisplayAndOrderFront(id window, SEL selector, id sender) {
  [[window contentView] setNeedsDisplay:YES];
  original_make_key_and_order_front(window, selector, sender);
}

BOOL (*original_make_first_responder)(id, SEL, NSResponder *);

// The view that shows the focus of the text that has the keyboard: what it is edited for, or the scroll view around it.
NSView *FocusedView(NSWindow *window) {
  id responder = [window firstResponder];
  if (![responder isKindOfClass:[NSText class]]) return nil;
  return [responder isFieldEditor] ? [responder delegate] : [responder enclosingScrollView];
}

BOOL MakeFirstResponderAndDisplay(id window, SEL selector, NSResponder *responder) {
  NSView *before = FocusedView(window);
  const BOOL made = original_make_first_responder(window, selector, responder);
  [before setNeedsDisplay:YES];
  [FocusedView(window) setNeedsDisplay:YES];
  return made;
}

void (*original_did_end_editing)(id, SEL, NSNotification *);

// By then another view has the keyboard.
void EndEditingAndDisplay(id field, SEL selector, NSNotification *notification) {
  original_did_end_editing(field, selector, notification);
  [field setNeedsDisplay:YES];
}

}  // namespace

const Replacement make_key_and_order_front("NSWindow", "makeKeyAndOrderFront:", DisplayAndOrderFront,
                                           &original_make_key_and_order_front);
const Replacement did_end_editing("NSTextField", "textDidEndEditing:", EndEditingAndDisplay, &original_did_end_editing);
const Replacement make_first_responder("NSWindow", "makeFirstResponder:", MakeFirstResponderAndDisplay,
                                       &original_make_first_responder);
