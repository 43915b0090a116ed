#import "OHostThemeControls.h"

#import <AppKit/AppKit.h>

#include <initializer_list>

#include <MethodReplacement.h>

#import "OHostDrawing.h"
#import "OHostThemeButtons.h"
#import "OHostThemeScrollers.h"

namespace {

// Points, from the edge of a field, a pop-up button or a menu to its text, and what AppKit leaves beside the text
// itself.
const CGFloat kSideMargin = 6;
const CGFloat kLineFragmentPadding = 2;

BOOL IsNotOpaque(id, SEL) {
  return NO;
}

using DrawTitle = NSRect (*)(id, SEL, NSAttributedString *, NSRect, NSView *);
DrawTitle original_draw_title;

NSRect DrawTitleInItsColor(id cell, SEL selector, NSAttributedString *title, NSRect frame, NSView *view) {
  if (!OHostIsBlueButton(cell, view)) return original_draw_title(cell, selector, title, frame, view);
  NSMutableAttributedString *white = [[title mutableCopy] autorelease];
  const NSRange whole = NSMakeRange(0, [white length]);
  [white addAttribute:NSForegroundColorAttributeName value:OHostColor(OHostWhite) range:whole];
  return original_draw_title(cell, selector, white, frame, view);
}

using MakeFirstResponder = BOOL (*)(id, SEL, NSResponder *);
MakeFirstResponder original_make_first_responder;

// Marks the field or the scroll view around a text for display: its border shows the focus.
void RedrawBorderAround(NSResponder *responder) {
  if (![responder isKindOfClass:[NSText class]]) return;
  NSView *around = static_cast<NSView *>(responder);
  // Between a text and the view with the border there is a clip view.
  for (int i = 0; i < 3 && around; ++i, around = [around superview]) {
    if ([around isKindOfClass:[NSTextField class]] || [around isKindOfClass:[NSScrollView class]]) {
      [around setNeedsDisplay:YES];
    }
  }
}

BOOL MakeFirstResponderAndShowIt(id window, SEL selector, NSResponder *responder) {
  NSResponder *former = [window firstResponder];
  const BOOL done = original_make_first_responder(window, selector, responder);
  RedrawBorderAround(former);
  RedrawBorderAround([window firstResponder]);
  return done;
}

using InitMenuView = id (*)(id, SEL, NSRect);
InitMenuView original_init_menu_view;

id InitMenuViewWithMargins(id menu_view, SEL selector, NSRect frame) {
  id made = original_init_menu_view(menu_view, selector, frame);
  [made setHorizontalEdgePadding:kSideMargin];
  return made;
}

using RectForBounds = NSRect (*)(id, SEL, NSRect);
RectForBounds original_title_rect;

// A pop-up button's title ends before its chevrons.
NSRect TitleRectBesideChevrons(id cell, SEL selector, NSRect bounds) {
  NSRect rect = original_title_rect(cell, selector, bounds);
  if (![cell isKindOfClass:[NSPopUpButtonCell class]]) return rect;
  rect.origin.x += OHostPopUpInset;
  rect.size.width = MAX(0, NSMaxX(bounds) - OHostPopUpInset - OHostPopUpArrowRoom - NSMinX(rect));
  return rect;
}

}  // namespace

@implementation NSTextFieldCell (OHostTheme)

// A line of text stands in the middle of a field with a border.
- (NSRect)drawingRectForBounds:(NSRect)bounds {
  if (![self isBezeled]) return [super drawingRectForBounds:bounds];
  const NSRect inside = NSInsetRect(bounds, kSideMargin - kLineFragmentPadding, 2);
  const CGFloat line = ceil([[self font] defaultLineHeightForFont]);
  const CGFloat spare = NSHeight(inside) - line;
  // A field of several lines begins at its top.
  return spare > 0 && spare < line ? NSInsetRect(inside, 0, floor(spare / 2)) : inside;
}

@end

void OHostInstallThemeControls() {
  // The corners of fields and the room around a scroller's knob show what is behind them.
  for (const char *name : {"NSTextFieldCell", "NSScroller"}) {
    ReplaceInstanceMethod<BOOL (*)(id, SEL)>(name, "isOpaque", IsNotOpaque);
  }
  original_draw_title =
      ReplaceInstanceMethod<DrawTitle>("NSButtonCell", "drawTitle:withFrame:inView:", DrawTitleInItsColor);
  original_make_first_responder =
      ReplaceInstanceMethod<MakeFirstResponder>("NSWindow", "makeFirstResponder:", MakeFirstResponderAndShowIt);
  original_init_menu_view =
      ReplaceInstanceMethod<InitMenuView>("NSMenuView", "initWithFrame:", InitMenuViewWithMargins);
  original_title_rect =
      ReplaceInstanceMethod<RectForBounds>("NSMenuItemCell", "titleRectForBounds:", TitleRectBesideChevrons);
  OHostInstallScrollerParts();
}
