#import "Controls.h"

#include <cstdlib>

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
  if ([view isKindOfClass:[NSButton class]] && [[static_cast<NSButton *>(view) title] isEqualToString:title]) {
    return static_cast<NSButton *>(view);
  }
  for (NSView *subview in [view subviews]) {
    NSButton *button = FindButton(subview, title);
    if (button) return button;
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

NSWindow *AlertPanel() {
  for (NSWindow *window in [NSApp windows]) {
    if ([window isVisible] && [window isKindOfClass:NSClassFromString(@"GSAlertPanel")]) return window;
  }
  return nil;
}

std::string AlertTexts() {
  std::string texts;
  CollectTexts([AlertPanel() contentView], &texts);
  return texts;
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

void DismissAlert() {
  Press(ButtonTitled(AlertPanel(), @"OK"));
}

void Choose(NSPopUpButton *popUp, NSString *title) {
  [popUp selectItemWithTitle:title];
  [NSApp sendAction:[popUp action] to:[popUp target] from:popUp];
}

void TakePicture(NSWindow *window, const std::string &name) {
  const char *folder = getenv("ORVANE_PICTURES");
  if (!folder || !window) return;
  [window display];
  NSView *content = [window contentView];
  [content lockFocus];
  NSBitmapImageRep *bitmap = [[[NSBitmapImageRep alloc] initWithFocusedViewRect:[content bounds]] autorelease];
  [content unlockFocus];
  NSData *png = [bitmap representationUsingType:NSPNGFileType properties:@{}];
  NSString *path = [NSString stringWithFormat:@"%s/%s.png", folder, name.c_str()];
  [png writeToFile:path atomically:YES];
}

}  // namespace window_test
