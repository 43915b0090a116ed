#import "DialogWindow.h"

static BOOL IsPlainEscape(NSEvent *event) {
  const NSUInteger modifiers =
      NSEventModifierFlagShift | NSEventModifierFlagControl | NSEventModifierFlagOption | NSEventModifierFlagCommand;
  if ([event type] != NSEventTypeKeyDown || ([event modifierFlags] & modifiers) != 0) return NO;
  return [[event charactersIgnoringModifiers] isEqualToString:@"\033"];
}

@interface DialogWindow ()
- (BOOL)isComposingText;
@end

@implementation DialogWindow

- (void)sendEvent:(NSEvent *)event {
  const BOOL closes = IsPlainEscape(event) && ([self styleMask] & NSWindowStyleMaskClosable) && ![self isComposingText];
  if (closes) {
    [self performClose:self];
  } else {
    [super sendEvent:event];
  }
}

// While an input method composes, Escape is its own key.
- (BOOL)isComposingText {
  id responder = [self firstResponder];
  return [responder respondsToSelector:@selector(hasMarkedText)] && [responder hasMarkedText];
}

@end
