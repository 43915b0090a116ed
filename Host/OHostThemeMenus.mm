// Menus: the bar in the host's window, its menus, and those of pop-up buttons.
#import "OHostTheme.h"

#import "OHostDrawing.h"

namespace {

// Points.
const CGFloat kBarHeight = 26;
const CGFloat kItemHeight = 24;
const CGFloat kSeparatorHeight = 9;

// Draws the title in one line at half the height of its place. What is too long loses its middle: names often differ at
// their ends.
void DrawTitle(NSString *title, NSFont *font, NSColor *color, NSRect place, BOOL centred) {
  NSMutableParagraphStyle *style = [[[NSMutableParagraphStyle alloc] init] autorelease];
  [style setLineBreakMode:NSLineBreakByTruncatingMiddle];
  NSDictionary *attributes =
      @{NSFontAttributeName : font, NSForegroundColorAttributeName : color, NSParagraphStyleAttributeName : style};
  NSAttributedString *text = [[[NSAttributedString alloc] initWithString:title attributes:attributes] autorelease];
  const NSSize size = [text size];
  const CGFloat x = floor(centred ? NSMidX(place) - size.width / 2 : NSMinX(place));
  const CGFloat y = NSMidY(place) - size.height / 2;
  // Half points go downwards, as they do beside a label.
  const BOOL flipped = [[NSView focusView] isFlipped];
  [text drawInRect:NSMakeRect(x, flipped ? ceil(y) : floor(y), NSMaxX(place) - x, size.height)];
}

}  // namespace

@implementation OHostTheme (Menus)

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

- (CGFloat)menuSubmenuHorizontalOverlap {
  return 0;
}

- (BOOL)menuShouldShowIcon {
  return NO;
}

- (NSColor *)menuBackgroundColor {
  return OHostColor(OHostWhite);
}

- (NSColor *)menuItemBackgroundColor {
  return OHostColor(OHostWhite);
}

- (void)drawMenuRect:(NSRect)rect inView:(NSView *)view isHorizontal:(BOOL)horizontal itemCells:(NSArray *)itemCells {
  NSMenuView *menu = static_cast<NSMenuView *>(view);
  [self drawBackgroundForMenuView:menu withFrame:[view bounds] dirtyRect:rect horizontal:horizontal];
  for (NSUInteger i = 0; i < [itemCells count]; ++i) {
    const NSRect item = [menu rectOfItemAtIndex:static_cast<NSInteger>(i)];
    if (NSIntersectsRect(rect, item)) [[itemCells objectAtIndex:i] drawWithFrame:item inView:view];
  }
}

- (void)drawBackgroundForMenuView:(NSMenuView *)menuView
                        withFrame:(NSRect)bounds
                        dirtyRect:(NSRect)dirtyRect
                       horizontal:(BOOL)horizontal {
  (void)menuView;
  (void)dirtyRect;
  if (!horizontal) {
    OHostDrawRounded(bounds, 0, OHostWhite, OHostBorder);
    return;
  }
  [OHostColor(OHostWhite) set];
  NSRectFill(bounds);
  [OHostColor(OHostHairline) set];
  NSRectFill(NSMakeRect(NSMinX(bounds), NSMinY(bounds), NSWidth(bounds), 1));
}

- (void)drawBorderAndBackgroundForMenuItemCell:(NSMenuItemCell *)cell
                                     withFrame:(NSRect)frame
                                        inView:(NSView *)view
                                         state:(GSThemeControlState)state
                                  isHorizontal:(BOOL)horizontal {
  (void)cell;
  (void)view;
  const BOOL chosen = state == GSThemeSelectedState || state == GSThemeHighlightedState;
  if (!chosen) return;
  OHostFillRounded(NSInsetRect(frame, 2, horizontal ? 3 : 1), 4, OHostBlue);
}

- (void)drawTitleForMenuItemCell:(NSMenuItemCell *)cell
                       withFrame:(NSRect)frame
                          inView:(NSView *)view
                           state:(GSThemeControlState)state
                    isHorizontal:(BOOL)horizontal {
  (void)view;
  NSColor *color = [NSColor controlTextColor];
  if (state == GSThemeSelectedState || state == GSThemeHighlightedState) color = [NSColor selectedMenuItemTextColor];
  if (state == GSThemeDisabledState) color = [NSColor disabledControlTextColor];
  const NSRect place = [cell titleRectForBounds:frame];
  DrawTitle([[cell menuItem] title], [cell font], color, horizontal ? frame : place, horizontal);
}

- (void)drawSeparatorItemForMenuItemCell:(NSMenuItemCell *)cell
                               withFrame:(NSRect)frame
                                  inView:(NSView *)view
                            isHorizontal:(BOOL)horizontal {
  (void)cell;
  (void)view;
  (void)horizontal;
  [OHostColor(OHostHairline) set];
  NSRectFill(NSMakeRect(NSMinX(frame) + 8, floor(NSMidY(frame)), NSWidth(frame) - 16, 1));
}

@end
