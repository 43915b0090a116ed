#import "Controls.h"

namespace window_test {

namespace {

void CollectTexts(NSView *view, std::string *texts) {
  if ([view isKindOfClass:[NSTextField class]]) {
    NSString *text = [static_cast<NSTextField *>(view) stringValue];
    if ([text length] > 0) *texts += std::string([text UTF8String]) + "\n";
  }
  for (NSView *subview in [view subviews]) CollectTexts(subview, texts);
}

NSButton *FindButton(NSView *view, NSString *title) {
  NSButton *button = [view isKindOfClass:[NSButton class]] ? static_cast<NSButton *>(view) : nil;
  if ([[button title] isEqual:title]) return button;
  for (NSView *subview in [view subviews]) {
    if ((button = FindButton(subview, title))) return button;
  }
  return nil;
}

}  // namespace

NSWindow *WindowTitled(NSString *title) {
  for (NSWindow *window in [NSApp windows]) {
    if ([window isVisible] && [[window title] isEqualToString:title]) return window;
  }
  return nil;
}

std::string TextsOf(NSWindow *window) {
  std::string texts;
  CollectTexts([window contentView], &texts);
  return texts;
}

NSWindow *AlertPanel() {
  for (NSWindow *window in [NSApp windows]) {
    if ([window isVisible] && [window isKindOfClass:NSClassFromString(@"GSAlertPanel")]) return window;
  }
  return nil;
}

std::string AlertTexts() {
  return TextsOf(AlertPanel());
}

bool IsModal(NSWindow *window) {
  return window && [NSApp modalWindow] == window;
}

NSButton *ButtonTitled(NSWindow *window, NSString *title) {
  return FindButton([window contentView], title);
}

void Press(NSButton *button) {
  [button performClick:nil];
}

void PressKey(NSWindow *window, NSString *character, NSUInteger modifiers) {
  [NSApp sendEvent:[NSEvent keyEventWithType:NSKeyDown
                                          location:NSZeroPoint
                                     modifierFlags:modifiers
                                         timestamp:0
                                      windowNumber:[window windowNumber]
                                           context:nil
                                        characters:character
                       charactersIgnoringModifiers:character
                                         isARepeat:NO
                                           keyCode:0]];
}

void SendMouse(NSWindow *window, NSEventType type, NSPoint point) {
  [window sendEvent:[NSEvent mouseEventWithType:type
                                       location:point
                                  modifierFlags:0
                                      timestamp:0
                                   windowNumber:[window windowNumber]
                                        context:nil
                                    eventNumber:0
                                     clickCount:1
                                       pressure:1]];
}

std::string TabOrder(NSWindow *window) {
  std::string order;
  [window makeFirstResponder:nil];  // a field that is being edited is no key view
  NSView *first = [window initialFirstResponder];
  NSView *view = first;
  do {
    NSString *label = [view accessibilityLabel];
    if (!label && [view respondsToSelector:@selector(title)]) label = [static_cast<NSButton *>(view) title];
    order += (order.empty() ? "" : "|") + std::string(label ? [label UTF8String] : "?");
    view = [view nextValidKeyView];
  } while (view && view != first && order.size() < 1000);
  return order;
}

void DismissAlert() {
  Press(ButtonTitled(AlertPanel(), @"OK"));
}

std::string DismissAlertWhenItComes(Script &actions) {
  actions.WaitFor("the alert", [] { return IsModal(AlertPanel()); });
  std::string texts;
  actions.OnMain([&texts] {
    texts = AlertTexts();
    DismissAlert();
  });
  return texts;
}

void Choose(NSPopUpButton *popUp, NSString *title) {
  [popUp selectItemWithTitle:title];
  [NSApp sendAction:[popUp action] to:[popUp target] from:popUp];
}

NSBitmapImageRep *PictureOf(NSWindow *window) {
  [window display];
  NSView *content = [window contentView];
  [content lockFocus];
  NSBitmapImageRep *bitmap = [[[NSBitmapImageRep alloc] initWithFocusedViewRect:[content bounds]] autorelease];
  [content unlockFocus];
  return bitmap;
}

}  // namespace window_test
