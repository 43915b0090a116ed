#import "OHostTheme.h"

#import "OHostDrawing.h"
#import "OHostThemeButtons.h"
#import "OHostThemeControls.h"
#import "OHostThemeImages.h"

const CGFloat OHostPopUpArrowRoom = 26;
const CGFloat OHostPopUpInset = 3;

namespace {

// Points. A button of AppKit's usual frames is as high as a text field. Within the frame of a push button, as of a
// pop-up button, AppKit leaves room beside the bezel.
const CGFloat kBezelHeight = 24;
const CGFloat kPushButtonInset = 6;

CGFloat SideInset(NSCell *cell) {
  if ([cell isKindOfClass:[NSPopUpButtonCell class]]) return OHostPopUpInset;
  const BOOL push = [cell isKindOfClass:[NSButtonCell class]] &&
                    [static_cast<NSButtonCell *>(cell) bezelStyle] == NSRoundedBezelStyle;
  return push ? kPushButtonInset : 0;
}

NSRect BezelRect(NSRect frame, NSCell *cell) {
  const CGFloat spare = NSHeight(frame) - kBezelHeight;
  return NSInsetRect(frame, SideInset(cell), spare > 0 ? floor(spare / 2) : 0);
}

BOOL IsPressed(GSThemeControlState state) {
  return state == GSThemeHighlightedState || state == GSThemeHighlightedFirstResponderState ||
         state == GSThemeSelectedState || state == GSThemeSelectedFirstResponderState;
}

struct SystemColor {
  NSString *name;
  OHostHue hue;
};

const SystemColor kSystemColors[] = {
    {@"windowBackgroundColor", OHostBackground},
    {@"controlBackgroundColor", OHostBackground},
    {@"controlColor", OHostBackground},
    {@"controlTextColor", OHostText},
    {@"textColor", OHostText},
    {@"disabledControlTextColor", OHostFaint},
    {@"scrollBarColor", OHostWhite},
    {@"selectedMenuItemColor", OHostBlue},
    {@"selectedMenuItemTextColor", OHostWhite},
    {@"selectedTextBackgroundColor", OHostSelection},
    {@"selectedTextColor", OHostText},
};

BOOL IsStockCell(NSCell *cell) {
  return [cell isMemberOfClass:[NSButtonCell class]] || [cell isMemberOfClass:[NSPopUpButtonCell class]];
}

NSRect FocusRectOfButton(NSButton *button) {
  const NSRect bounds = [button bounds];
  // A cell class of its own draws a bezel as large as the button.
  if ([button isBordered]) return IsStockCell([button cell]) ? BezelRect(bounds, [button cell]) : bounds;
  if ([button imagePosition] != NSImageLeft) return bounds;
  return NSMakeRect(0, floor((NSHeight(bounds) - OHostCheckBoxSize) / 2), OHostCheckBoxSize, OHostCheckBoxSize);
}

// The two chevrons of a pop-up button, at the right.
void DrawChevrons(NSRect bezel, BOOL enabled) {
  const CGFloat x = NSMaxX(bezel) - 13;
  const CGFloat y = NSMidY(bezel);
  const OHostHue hue = enabled ? OHostBlue : OHostBorder;
  const NSPoint up[] = {{x - 3.5, y - 3}, {x, y - 6.5}, {x + 3.5, y - 3}};
  const NSPoint down[] = {{x - 3.5, y + 3}, {x, y + 6.5}, {x + 3.5, y + 3}};
  OHostStrokeLine(up, 3, 1.5, hue);
  OHostStrokeLine(down, 3, 1.5, hue);
}

}  // namespace

BOOL OHostIsBlueButton(NSCell *cell, NSView *view) {
  if (![cell isMemberOfClass:[NSButtonCell class]] || ![cell isEnabled] || ![cell isBordered]) return NO;
  NSButtonCell *button = static_cast<NSButtonCell *>(cell);
  return [[button keyEquivalent] isEqualToString:@"\r"] || [[view window] defaultButtonCell] == button;
}

@implementation OHostTheme

+ (void)setThemeWhenLaunched {
  [[NSNotificationCenter defaultCenter] addObserver:self
                                           selector:@selector(applicationWillFinishLaunching:)
                                               name:NSApplicationWillFinishLaunchingNotification
                                             object:nil];
}

+ (void)applicationWillFinishLaunching:(NSNotification *)notification {
  (void)notification;
  OHostTheme *theme = [[[self alloc] initWithBundle:[NSBundle mainBundle]] autorelease];
  [GSTheme setTheme:theme];
  // When defaults change, AppKit compares the theme's name with the one among them, and would take its own again.
  [[NSUserDefaults standardUserDefaults] registerDefaults:@{@"GSTheme" : [theme name]}];
  OHostRegisterThemeImages();
  OHostInstallThemeControls();
}

- (NSString *)name {
  return @"OHostTheme";
}

// AppKit's own colours with some of the theme's in their place.
- (NSColorList *)colors {
  NSColorList *colors = [[[NSColorList alloc] initWithName:@"System"] autorelease];
  NSColorList *stock = [NSColorList colorListNamed:@"System"];
  for (NSString *key in [stock allKeys]) [colors setColor:[stock colorWithKey:key] forKey:key];
  for (const SystemColor &color : kSystemColors) [colors setColor:OHostColor(color.hue) forKey:color.name];
  return colors;
}

#pragma mark Buttons

- (void)drawButton:(NSRect)frame
                in:(NSCell *)cell
              view:(NSView *)view
             style:(int)style
             state:(GSThemeControlState)state {
  (void)style;
  const NSRect bezel = BezelRect(frame, cell);
  const BOOL pressed = IsPressed(state);
  if (![cell isEnabled]) {
    OHostDrawRounded(bezel, OHostCornerRadius, OHostBackground, OHostHairline);
  } else if (OHostIsBlueButton(cell, view)) {
    OHostDrawRounded(bezel, OHostCornerRadius, pressed ? OHostDarkBlue : OHostBlue, OHostDarkBlue);
  } else {
    OHostDrawRounded(bezel, OHostCornerRadius, pressed ? OHostPressed : OHostWhite, OHostBorder);
  }
}

- (GSThemeMargins)buttonMarginsForCell:(NSCell *)cell style:(int)style state:(GSThemeControlState)state {
  (void)style;
  (void)state;
  const CGFloat side = 4 + SideInset(cell);
  return {side, [cell isKindOfClass:[NSPopUpButtonCell class]] ? OHostPopUpArrowRoom + OHostPopUpInset : side, 2, 2};
}

// No picture of a return key in the default button; its colour tells.
- (void)setKeyEquivalent:(NSString *)key forButtonCell:(NSButtonCell *)cell {
  (void)key;
  (void)cell;
}

- (void)drawPopUpButtonCellInteriorWithFrame:(NSRect)frame withCell:(NSCell *)cell inView:(NSView *)view {
  (void)view;
  DrawChevrons(BezelRect(frame, cell), [cell isEnabled]);
}

#pragma mark Borders and focus

- (void)drawFocusFrame:(NSRect)frame view:(NSView *)view {
  // The frame that AppKit gives lies within a button's border.
  OHostDrawFocusRing([view isKindOfClass:[NSButton class]] ? FocusRectOfButton(static_cast<NSButton *>(view)) : frame,
                     OHostCornerRadius);
}

- (NSSize)sizeForBorderType:(NSBorderType)type {
  switch (type) {
    case NSBezelBorder:
    case NSGrooveBorder:
      return NSMakeSize(2, 2);
    case NSLineBorder:
      return NSMakeSize(1, 1);
    default:
      return NSZeroSize;
  }
}

// Whether the view's text is what is being edited.
static BOOL HasTextFocus(NSView *view) {
  NSResponder *focus = [[view window] firstResponder];
  if ([view isKindOfClass:[NSScrollView class]]) return focus == [static_cast<NSScrollView *>(view) documentView];
  return [view isKindOfClass:[NSTextField class]] && [static_cast<NSTextField *>(view) currentEditor] != nil;
}

- (void)drawBorderType:(NSBorderType)type frame:(NSRect)frame view:(NSView *)view {
  if (type == NSNoBorder) return;
  if (type == NSLineBorder) {
    OHostDrawRounded(frame, 0, OHostWhite, OHostBorder);
    return;
  }
  const BOOL focused = HasTextFocus(view);
  OHostDrawRounded(frame, OHostCornerRadius, OHostWhite, focused ? OHostBlue : OHostBorder);
  if (focused) OHostDrawFocusRing(frame, OHostCornerRadius);
}

- (void)drawBorderForImageFrameStyle:(NSImageFrameStyle)style frame:(NSRect)frame view:(NSView *)view {
  (void)view;
  if (style != NSImageFrameNone) OHostDrawRounded(frame, OHostCornerRadius, OHostWhite, OHostBorder);
}

- (NSSize)sizeForImageFrameStyle:(NSImageFrameStyle)style {
  return style == NSImageFrameNone ? NSZeroSize : NSMakeSize(3, 3);
}

- (void)drawScrollViewRect:(NSRect)rect inView:(NSView *)view {
  (void)rect;
  [self drawBorderType:[static_cast<NSScrollView *>(view) borderType] frame:[view bounds] view:view];
}

@end
