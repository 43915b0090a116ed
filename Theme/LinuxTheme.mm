#import "LinuxTheme.h"

#include <algorithm>

#import "LinuxThemeDrawing.h"
#import "LinuxThemeImages.h"

namespace {

// Points. Within the frame of a push button AppKit leaves room around the bezel.
const CGFloat kCornerRadius = 4;
const CGFloat kBezelHeight = 24;
const CGFloat kPushButtonInset = 6;
const CGFloat kTextMargin = 4;
const CGFloat kRingWidth = 2;

const CGFloat kSpinnerStep = 15;  // degrees

BOOL IsPopUp(NSCell *cell) {
  return [cell isKindOfClass:[NSPopUpButtonCell class]];
}

CGFloat SideInset(NSCell *cell) {
  if (IsPopUp(cell)) return LinuxThemePopUpInset;
  const BOOL push = [cell isMemberOfClass:[NSButtonCell class]] && [cell isBordered] &&
                    [static_cast<NSButtonCell *>(cell) bezelStyle] == NSRoundedBezelStyle;
  return push ? kPushButtonInset : 0;
}

NSRect BezelRect(NSRect frame, NSCell *cell) {
  const CGFloat inset = SideInset(cell);
  return inset > 0 ? NSInsetRect(frame, inset, std::max(0.0, floor((NSHeight(frame) - kBezelHeight) / 2))) : frame;
}

// What the focus ring goes round: a check box and its title, and the bezel of another button with the room around it.
NSRect FocusRect(NSButton *button) {
  NSRect bounds = [button bounds];
  if (SideInset([button cell]) > 0)
    return NSIntersectionRect(bounds, NSInsetRect(BezelRect(bounds, [button cell]), -kRingWidth, -kRingWidth));
  if (![button isBordered]) bounds.size.width = std::min(NSWidth(bounds), [[button cell] cellSize].width + kTextMargin);
  return bounds;
}

// Whether the view or what it holds has the keyboard: the text of a field is edited in a view of its window.
BOOL HasKeyboard(NSView *view) {
  id responder = [[view window] firstResponder];
  if ([responder isKindOfClass:[NSText class]] && [responder isFieldEditor]) responder = [responder delegate];
  return responder == view ||
         ([view isKindOfClass:[NSScrollView class]] && responder == [static_cast<NSScrollView *>(view) documentView]);
}

BOOL IsPressed(GSThemeControlState state) {
  return state == GSThemeHighlightedState || state == GSThemeHighlightedFirstResponderState ||
         state == GSThemeSelectedState || state == GSThemeSelectedFirstResponderState;
}

BOOL IsDefault(NSCell *cell) {
  return [cell isMemberOfClass:[NSButtonCell class]] &&
         [[static_cast<NSButtonCell *>(cell) keyEquivalent] isEqualToString:@"\r"];
}

// No color object: AppKit reads these values when it makes the first one.
NSString *ColorValue(LinuxThemeHue hue) {
  return [NSString
      stringWithFormat:@"%f %f %f", (hue >> 16 & 0xff) / 255.0, (hue >> 8 & 0xff) / 255.0, (hue & 0xff) / 255.0];
}

}  // namespace

void UseLinuxTheme() {
  NSUserDefaults *defaults = [NSUserDefaults standardUserDefaults];
  [defaults registerDefaults:@{
    @"GSSuppressAppIcon" : @"YES",
    @"NSMenuInterfaceStyle" : @"NSWindows95InterfaceStyle",
    @"NSScrollViewInterfaceStyle" : @"NSMacintoshInterfaceStyle",
    @"NSFont" : @"LiberationSans",
    @"NSBoldFont" : @"LiberationSans-Bold",
    @"NSFontSize" : @"13",
    // It stands in for what another font lacks; without its name AppKit would show question marks.
    @"NSPreferredFonts" : @[ @"WenQuanYiMicroHei" ],
    @"windowBackgroundColor" : ColorValue(LinuxThemeBackground),
    @"controlBackgroundColor" : ColorValue(LinuxThemeBackground),
    @"controlColor" : ColorValue(LinuxThemeBackground),
    @"controlTextColor" : ColorValue(LinuxThemeText),
    @"textColor" : ColorValue(LinuxThemeText),
    @"disabledControlTextColor" : ColorValue(LinuxThemeFaint),
    @"keyboardFocusIndicatorColor" : ColorValue(LinuxThemeBlue),
    @"scrollBarColor" : ColorValue(LinuxThemeWhite),
    @"selectedMenuItemColor" : ColorValue(LinuxThemeBlue),
    @"selectedMenuItemTextColor" : ColorValue(LinuxThemeWhite),
    @"selectedTextBackgroundColor" : ColorValue(LinuxThemeSelection),
    @"selectedTextColor" : ColorValue(LinuxThemeText),
  }];
  // That is the earliest time at which AppKit takes a theme.
  [[NSNotificationCenter defaultCenter] addObserver:[LinuxTheme class]
                                           selector:@selector(applicationWillFinishLaunching:)
                                               name:NSApplicationWillFinishLaunchingNotification
                                             object:nil];
}

@implementation LinuxTheme

+ (void)applicationWillFinishLaunching:(NSNotification *)notification {
  LinuxTheme *theme = [[[self alloc] initWithBundle:[NSBundle mainBundle]] autorelease];
  [GSTheme setTheme:theme];
  LinuxThemeRegisterImages();
  // When defaults change, AppKit compares the theme's name with the one among them, and would take its own again.
  [[NSUserDefaults standardUserDefaults] registerDefaults:@{@"GSTheme" : [theme name]}];
}

- (NSString *)name {
  return @"LinuxTheme";
}

#pragma mark Buttons

- (void)drawButton:(NSRect)frame
                in:(NSCell *)cell
              view:(NSView *)view
             style:(int)style
             state:(GSThemeControlState)state {
  const BOOL bold = IsDefault(cell) && [cell isEnabled];
  LinuxThemeDrawRounded(BezelRect(frame, cell), kCornerRadius,
                        IsPressed(state)   ? LinuxThemePressed
                        : [cell isEnabled] ? LinuxThemeWhite
                                           : LinuxThemeBackground,
                        bold ? LinuxThemeBlue : LinuxThemeBorder, bold ? 2 : 1);
}

- (GSThemeMargins)buttonMarginsForCell:(NSCell *)cell style:(int)style state:(GSThemeControlState)state {
  const CGFloat side = kTextMargin + SideInset(cell);
  return {side, side, 2, 2};
}

// No picture of a return key in the default button; its border tells.
- (void)setKeyEquivalent:(NSString *)key forButtonCell:(NSButtonCell *)cell {
}

#pragma mark Progress

// An arc that goes round, and a bar as AppKit's.
- (void)drawProgressIndicator:(NSProgressIndicator *)progress
                   withBounds:(NSRect)bounds
                     withClip:(NSRect)rect
                      atCount:(int)count
                     forValue:(double)value {
  if ([progress style] != NSProgressIndicatorSpinningStyle) {
    [super drawProgressIndicator:progress withBounds:bounds withClip:rect atCount:count forValue:value];
    return;
  }
  const CGFloat begin = -kSpinnerStep * count;
  NSBezierPath *arc = [NSBezierPath bezierPath];
  [arc appendBezierPathWithArcWithCenter:NSMakePoint(NSMidX(bounds), NSMidY(bounds))
                                  radius:(std::min(NSWidth(bounds), NSHeight(bounds)) - kRingWidth) / 2
                              startAngle:begin
                                endAngle:begin + 270];
  [arc setLineWidth:kRingWidth];
  [LinuxThemeColor(LinuxThemeBlue) set];
  [arc stroke];
}

- (NSRect)drawProgressIndicatorBezel:(NSRect)bounds withClip:(NSRect)clip {
  LinuxThemeDrawRounded(bounds, 0, LinuxThemeWhite, LinuxThemeBorder);
  return NSInsetRect(bounds, 1, 1);
}

- (void)drawProgressIndicatorBarDeterminate:(NSRect)bounds {
  [LinuxThemeColor(LinuxThemeBlue) set];
  NSRectFill(bounds);
}

#pragma mark Borders and focus

- (void)drawFocusFrame:(NSRect)frame view:(NSView *)view {
  NSButton *button = [view isKindOfClass:[NSButton class]] ? static_cast<NSButton *>(view) : nil;
  if (button) frame = FocusRect(button);
  LinuxThemeDrawRing(frame, kCornerRadius, LinuxThemeBlue);
  // On a button with a bezel of its own, which may be as dark as the ring, a second line tells it.
  if ([button isBordered] && SideInset([button cell]) == 0) {
    LinuxThemeDrawRing(NSInsetRect(frame, kRingWidth, kRingWidth), kCornerRadius - 1, LinuxThemeWhite);
  }
}

- (NSSize)sizeForBorderType:(NSBorderType)type {
  return type == NSNoBorder ? NSZeroSize : NSMakeSize(kRingWidth, kRingWidth);
}

- (void)drawBorderType:(NSBorderType)type frame:(NSRect)frame view:(NSView *)view {
  if (type == NSNoBorder) return;
  LinuxThemeDrawRounded(frame, kCornerRadius, LinuxThemeWhite, LinuxThemeBorder);
  if (HasKeyboard(view)) LinuxThemeDrawRing(frame, kCornerRadius, LinuxThemeBlue);
}

- (void)drawScrollViewRect:(NSRect)rect inView:(NSView *)view {
  [self drawBorderType:[static_cast<NSScrollView *>(view) borderType] frame:[view bounds] view:view];
}

@end
