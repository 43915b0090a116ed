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
void DrawTitle(NSString *title, NSDictionary *attributes, NSRect place, BOOL centred) {
  NSString *shown = title;
  NSSize size = [shown sizeWithAttributes:attributes];
  for (NSUInteger length = [title length]; size.width > NSWidth(place) && length > 1;) {
    // By the share that is too long, which needs few steps even for a long title, and by whole characters.
    length = MIN(length - 1, static_cast<NSUInteger>(length * NSWidth(place) / size.width) + 1);
    const NSUInteger from = [title rangeOfComposedCharacterSequenceAtIndex:length - length / 2].location;
    const NSUInteger last = [title length] - MAX(length / 2, 1u);
    const NSUInteger to = [title rangeOfComposedCharacterSequenceAtIndex:last].location;
    shown = [NSString stringWithFormat:@"%@…%@", [title substringToIndex:from], [title substringFromIndex:to]];
    size = [shown sizeWithAttributes:attributes];
  }
  const CGFloat x = centred ? NSMidX(place) - size.width / 2 : NSMinX(place);
  const CGFloat y = NSMidY(place) - size.height / 2;
  // Half points go downwards, as they do beside a label.
  const BOOL flipped = [[NSView focusView] isFlipped];
  [shown drawAtPoint:NSMakePoint(floor(x), flipped ? ceil(y) : floor(y)) withAttributes:attributes];
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
  NSDictionary *attributes = @{NSFontAttributeName : [cell font], NSForegroundColorAttributeName : color};
  DrawTitle([[cell menuItem] title], attributes, horizontal ? frame : place, horizontal);
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
