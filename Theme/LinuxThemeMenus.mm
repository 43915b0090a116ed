// Menus: the bar in the host's window, its menus, and those of pop-up buttons.
#import "LinuxTheme.h"
#import "LinuxThemeDrawing.h"

namespace {

// Points.
const CGFloat kBarHeight = 26;
const CGFloat kItemHeight = 24;
const CGFloat kSeparatorHeight = 9;
const CGFloat kSideMargin = 6;
const CGFloat kPopUpArrowRoom = 14;

NSColor *TitleColor(GSThemeControlState state) {
  if (state == GSThemeSelectedState || state == GSThemeHighlightedState) return [NSColor selectedMenuItemTextColor];
  return state == GSThemeDisabledState ? [NSColor disabledControlTextColor] : [NSColor controlTextColor];
}

}  // namespace

@implementation LinuxTheme (Menus)

- (CGFloat)menuBarHeight {
  return kBarHeight;
}

- (CGFloat)menuItemHeight {
  return kItemHeight;
}

- (CGFloat)menuSeparatorHeight {
  return kSeparatorHeight;
}

- (CGFloat)menuSubmenuVerticalOverlap {
  return 0;
}

- (BOOL)menuShouldShowIcon {
  return NO;
}

- (void)drawBackgroundForMenuView:(NSMenuView *)menuView
                        withFrame:(NSRect)bounds
                        dirtyRect:(NSRect)dirtyRect
                       horizontal:(BOOL)horizontal {
  LinuxThemeDrawRounded(bounds, 0, LinuxThemeWhite, LinuxThemeBorder);
}

- (void)drawBorderAndBackgroundForMenuItemCell:(NSMenuItemCell *)cell
                                     withFrame:(NSRect)frame
                                        inView:(NSView *)view
                                         state:(GSThemeControlState)state
                                  isHorizontal:(BOOL)horizontal {
  if (state != GSThemeSelectedState && state != GSThemeHighlightedState) return;
  [[NSColor selectedMenuItemColor] set];
  NSRectFill(NSInsetRect(frame, 1, 1));
}

// Draws the title in one line at half the height of its place. In a pop-up button, what is too long loses its middle:
// names often differ at their ends.
- (void)drawTitleForMenuItemCell:(NSMenuItemCell *)cell
                       withFrame:(NSRect)frame
                          inView:(NSView *)view
                           state:(GSThemeControlState)state
                    isHorizontal:(BOOL)horizontal {
  NSMutableParagraphStyle *style = [[[NSMutableParagraphStyle alloc] init] autorelease];
  [style setLineBreakMode:NSLineBreakByTruncatingMiddle];
  [style setAlignment:horizontal ? NSCenterTextAlignment : NSLeftTextAlignment];
  NSAttributedString *title = [[[NSAttributedString alloc] initWithString:[[cell menuItem] title]
                                                               attributes:@{
                                                                 NSFontAttributeName : [cell font],
                                                                 NSForegroundColorAttributeName : TitleColor(state),
                                                                 NSParagraphStyleAttributeName : style
                                                               }] autorelease];
  NSRect place = horizontal ? frame : [cell titleRectForBounds:frame];
  if ([cell isKindOfClass:[NSPopUpButtonCell class]]) {
    place = NSInsetRect(frame, LinuxThemePopUpInset + kSideMargin, 0);
    place.size.width -= kPopUpArrowRoom;
  }
  place.size.height = [title size].height;
  // Half points go downwards, as they do beside a label.
  const CGFloat y = NSMidY(frame) - place.size.height / 2;
  place.origin.y = [view isFlipped] ? ceil(y) : floor(y);
  [title drawInRect:place];
}

@end
