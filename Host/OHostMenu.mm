#import "OHostMenu.h"

NSMenu *OHostInstallMenu(id target, SEL quit) {
  NSMenu *main_menu = [[[NSMenu alloc] initWithTitle:@"Orvane Host"] autorelease];
  NSMenu *file = [[[NSMenu alloc] initWithTitle:@"File"] autorelease];
  NSMenu *export_menu = [[[NSMenu alloc] initWithTitle:@"Export"] autorelease];

  // With its menu in the window AppKit puts an item of the program's name in front, unless there is one.
  NSString *name = [[NSProcessInfo processInfo] processName];
  NSMenu *program = [[[NSMenu alloc] initWithTitle:name] autorelease];
  [program addItemWithTitle:@"Minimize" action:@selector(performMiniaturize:) keyEquivalent:@""];
  NSMenuItem *program_item = (NSMenuItem *)[main_menu addItemWithTitle:name action:NULL keyEquivalent:@""];
  [main_menu setSubmenu:program forItem:program_item];

  NSMenuItem *file_item = (NSMenuItem *)[main_menu addItemWithTitle:@"File" action:NULL keyEquivalent:@""];
  [main_menu setSubmenu:file forItem:file_item];
  NSMenuItem *export_item = (NSMenuItem *)[file addItemWithTitle:@"Export" action:NULL keyEquivalent:@""];
  [file setSubmenu:export_menu forItem:export_item];
  [file addItem:[NSMenuItem separatorItem]];
  NSMenuItem *quit_item = (NSMenuItem *)[file addItemWithTitle:@"Quit" action:quit keyEquivalent:@""];
  [quit_item setTarget:target];

  [NSApp setMainMenu:main_menu];
  return export_menu;
}

void OHostAddExportItem(NSMenu *menu, NSString *title, NSInteger tag, id target, SEL action) {
  NSMenuItem *item = (NSMenuItem *)[menu addItemWithTitle:title action:action keyEquivalent:@""];
  [item setTarget:target];
  [item setTag:tag];
}

void OHostLetGoOfMouse(void) {
  for (NSWindow *window in [NSApp windows]) {
    for (NSView *view in [[window contentView] subviews]) {
      if ([view isKindOfClass:[NSMenuView class]]) [static_cast<NSMenuView *>(view) setHighlightedItemIndex:-1];
    }
  }
  // Far from every control, before the pointer highlights an item again.
  [NSApp postEvent:[NSEvent mouseEventWithType:NSLeftMouseUp
                                      location:NSMakePoint(-10000, -10000)
                                 modifierFlags:0
                                     timestamp:0
                                  windowNumber:[[NSApp keyWindow] windowNumber]
                                       context:nil
                                   eventNumber:0
                                    clickCount:1
                                      pressure:0]
           atStart:YES];
}

BOOL OHostIsMenuWindow(NSWindow *window) {
  for (NSString *name in @[ @"NSMenuPanel", @"NSIconWindow", @"NSMiniWindow", @"GSTTPanel" ]) {
    Class kind = NSClassFromString(name);
    if (kind && [window isKindOfClass:kind]) return YES;
  }
  return NO;
}
