// Return in a text view begins a new line, and in a text field with an action it sends that action. GNUstep gives every
// key to the default button first, AppKit only those for which the text has no use.
#import <Cocoa/Cocoa.h>

#include "Replacements.h"

namespace {

BOOL (*original_perform_key_equivalent)(id, SEL, NSEvent *);

bool IsPlainReturn(NSEvent *event) {
  const NSUInteger modifiers = NSShiftKeyMask | NSControlKeyMask | NSAlternateKeyMask | NSCommandKeyMask;
  if ([event type] != NSKeyDown || ([event modifierFlags] & modifiers) != 0) return false;
  NSString *characters = [event characters];
  return [characters isEqualToString:@"\r"] || [characters isEqualToString:@"\003"];
}

// Whether the text that is being edited has a use for Return of its own.
bool TextWantsReturn(NSWindow *window) {
  NSResponder *responder = [window firstResponder];
  if (![responder isKindOfClass:[NSTextView class]]) return false;
  NSTextView *text = (NSTextView *)responder;
  if (![text isEditable]) return false;
  if (![text isFieldEditor]) return true;
  id field = [text delegate];
  return [field isKindOfClass:[NSControl class]] && [field action] != NULL;
}

BOOL PerformKeyEquivalentUnlessText(id window, SEL selector, NSEvent *event) {
  if (IsPlainReturn(event) && TextWantsReturn(window)) return NO;
  return original_perform_key_equivalent(window, selector, event);
}

}  // namespace

const Replacement perform_key_equivalent("NSWindow", "performKeyEquivalent:", PerformKeyEquivalentUnlessText,
                                         &original_perform_key_equivalent);
