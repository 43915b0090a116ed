#import "DialogWindow.h"

#import <QuartzCore/QuartzCore.h>

#include <stdexcept>

#include "ExceptionGuard.h"
#include "WorkflowState.h"

// What every Edit menu sends and no header of the platform declares.
@protocol OrvUndoing
- (void)undo:(id)sender;
@end

// Whether the event is a press of a key with these modifiers and no other.
static BOOL IsKeyWithModifiers(NSEvent *event, NSUInteger wanted) {
  const NSUInteger modifiers =
      NSEventModifierFlagShift | NSEventModifierFlagControl | NSEventModifierFlagOption | NSEventModifierFlagCommand;
  return [event type] == NSEventTypeKeyDown && ([event modifierFlags] & modifiers) == wanted;
}

static BOOL IsPlainEscape(NSEvent *event) {
  return IsKeyWithModifiers(event, 0) && [[event charactersIgnoringModifiers] isEqualToString:@"\033"];
}

// What the Command key and this one mean in an Edit menu; NULL for other keys.
static SEL ActionOfKey(NSString *key) {
  if ([key isEqualToString:@"x"]) return @selector(cut:);
  if ([key isEqualToString:@"c"]) return @selector(copy:);
  if ([key isEqualToString:@"v"]) return @selector(paste:);
  if ([key isEqualToString:@"a"]) return @selector(selectAll:);
  if ([key isEqualToString:@"z"]) return @selector(undo:);
  return NULL;
}

// What the event means in an Edit menu; NULL for others. On a Cyrillic or Greek layout only the Command key makes Latin
// letters.
static SEL EditingAction(NSEvent *event) {
  if (!IsKeyWithModifiers(event, NSEventModifierFlagCommand)) return NULL;
  const SEL action = ActionOfKey([event characters]);
  return action != NULL ? action : ActionOfKey([event charactersIgnoringModifiers]);
}

@interface DialogWindow ()
- (BOOL)isComposingText;
- (void)postponeClosing;
- (void)closeIfAsked;
@end

@implementation DialogWindow

- (id)initWithContentRect:(NSRect)contentRect
                styleMask:(NSUInteger)style
                  backing:(NSBackingStoreType)backing
                    defer:(BOOL)defer {
  if ((self = [super initWithContentRect:contentRect styleMask:style backing:backing defer:defer])) {
    [self setAppearance:[NSAppearance appearanceNamed:NSAppearanceNameAqua]];
  }
  return self;
}

- (BOOL)performKeyEquivalent:(NSEvent *)event {
  if ([super performKeyEquivalent:event]) return YES;
  const SEL action = EditingAction(event);
  return action != NULL && [NSApp sendAction:action to:nil from:self];
}

- (BOOL)makeFirstResponder:(NSResponder *)responder {
  if (![super makeFirstResponder:responder]) return NO;
  if ([responder isKindOfClass:[NSControl class]]) {
    NSControl *control = static_cast<NSControl *>(responder);
    [control scrollRectToVisible:[control bounds]];
  }
  return YES;
}

- (void)sendEvent:(NSEvent *)event {
  const BOOL closes = IsPlainEscape(event) && ([self styleMask] & NSWindowStyleMaskClosable) && ![self isComposingText];
  if (closes) {
    [self performClose:self];
  } else {
    [super sendEvent:event];
  }
}

// While an input method composes, Escape is its own key. The length counts, too: on some systems a text view from an
// interface file claims marked text that has none.
- (BOOL)isComposingText {
  id responder = [self firstResponder];
  return [responder respondsToSelector:@selector(hasMarkedText)] && [responder hasMarkedText] &&
         [responder markedRange].length > 0;
}

- (void)postponeClosing {
  ++reasonsToStay;
}

- (void)closeIfAsked {
  if (--reasonsToStay > 0 || !closeWasAsked) return;
  closeWasAsked = NO;
  [self close];
}

- (void)close {
  if (reasonsToStay > 0) {
    closeWasAsked = YES;
  } else {
    [super close];
  }
}

@end

static DialogWindow *AsDialog(NSWindow *window) {
  return [window isKindOfClass:[DialogWindow class]] ? static_cast<DialogWindow *>(window) : nil;
}

// Keeps the window from closing while it lives.
class WindowAtWork {
 public:
  explicit WindowAtWork(NSWindow *window) : window_([AsDialog(window) retain]) { [window_ postponeClosing]; }
  ~WindowAtWork() {
    [window_ closeIfAsked];
    [window_ release];
  }
  WindowAtWork(const WindowAtWork &) = delete;
  WindowAtWork &operator=(const WindowAtWork &) = delete;

 private:
  DialogWindow *window_;
};

void RunAtWork(NSWindow *window, const std::function<void()> &action) {
  RunGuarded([window, &action] {
    const WindowAtWork atWork(window);
    action();
  });
}

void ShowWaiting(NSProgressIndicator *spinner) {
  [spinner startAnimation:nil];
  [[spinner window] display];
  [CATransaction flush];
}

void DialogWillClose(bool endsExport) {
  RunGuarded([endsExport] {
    [NSApp stopModal];
    if (endsExport) g_pCleanupFunc();
  });
}

NSInteger RunModalDialog(NSWindow *window) {
  if (!window) throw std::runtime_error("an interface file of the plug-in holds no window");
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
