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

NSInteger RunModalDialog(NSWindow *window) {
  [window center];
  [window makeKeyAndOrderFront:nil];
  const NSInteger response = [NSApp runModalForWindow:window];
  [window orderOut:nil];
  return response;
}

void StopModalDialog() {
  NSWindow *window = [NSApp modalWindow];
  if (![window isKindOfClass:[DialogWindow class]]) return;
  [NSApp stopModal];
  [window orderOut:nil];
}
