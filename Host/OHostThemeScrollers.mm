// Slim scrollers: a round knob in a quiet groove, without arrows.
#import "OHostThemeScrollers.h"

#include <MethodReplacement.h>

#import "OHostDrawing.h"
#import "OHostTheme.h"

namespace {

// Points.
const CGFloat kScrollerWidth = 12;
const CGFloat kKnobMargin = 3;
const CGFloat kShortestKnob = 24;
const CGFloat kSmallestHiddenPart = 4;  // less is a border's width, not text

BOOL IsHorizontal(NSScroller *scroller) {
  return NSWidth([scroller bounds]) > NSHeight([scroller bounds]);
}

NSRect KnobRect(NSScroller *scroller) {
  const NSRect bounds = [scroller bounds];
  const BOOL horizontal = IsHorizontal(scroller);
  const CGFloat length = horizontal ? NSWidth(bounds) : NSHeight(bounds);
  const CGFloat share = floor(length * [scroller knobProportion]);
  const CGFloat knob = MIN(length, MAX(kShortestKnob, share));
  const CGFloat start = floor((length - knob) * [scroller doubleValue]);
  return horizontal ? NSMakeRect(start, 0, knob, NSHeight(bounds)) : NSMakeRect(0, start, NSWidth(bounds), knob);
}

BOOL HasKnob(NSScroller *scroller) {
  if ([scroller usableParts] != NSAllScrollerParts) return NO;
  const NSRect bounds = [scroller bounds];
  const CGFloat length = MAX(NSWidth(bounds), NSHeight(bounds));
  return length * (1 - [scroller knobProportion]) > kSmallestHiddenPart;
}

NSRect RectForPart(id scroller, SEL, NSScrollerPart part) {
  const NSRect bounds = [scroller bounds];
  const NSRect knob = KnobRect(scroller);
  const BOOL horizontal = IsHorizontal(scroller);
  switch (part) {
    case NSScrollerKnob:
      return HasKnob(scroller) ? knob : NSZeroRect;
    case NSScrollerKnobSlot:
      return bounds;
    case NSScrollerDecrementPage:
      return horizontal ? NSMakeRect(0, 0, NSMinX(knob), NSHeight(bounds))
                        : NSMakeRect(0, 0, NSWidth(bounds), NSMinY(knob));
    case NSScrollerIncrementPage:
      return horizontal ? NSMakeRect(NSMaxX(knob), 0, NSWidth(bounds) - NSMaxX(knob), NSHeight(bounds))
                        : NSMakeRect(0, NSMaxY(knob), NSWidth(bounds), NSHeight(bounds) - NSMaxY(knob));
    default:
      return NSZeroRect;
  }
}

}  // namespace

void OHostInstallScrollerParts() {
  ReplaceInstanceMethod<NSRect (*)(id, SEL, NSScrollerPart)>("NSScroller", "rectForPart:", RectForPart);
}

@implementation OHostTheme (Scrollers)

- (float)defaultScrollerWidth {
  return kScrollerWidth;
}

- (void)drawScrollerRect:(NSRect)rect
                  inView:(NSView *)view
                 hitPart:(NSScrollerPart)hitPart
            isHorizontal:(BOOL)isHorizontal {
  (void)isHorizontal;
  [OHostColor(OHostWhite) set];
  NSRectFill(rect);
  NSScroller *scroller = static_cast<NSScroller *>(view);
  const NSRect knob = [scroller rectForPart:NSScrollerKnob];
  if (NSIsEmptyRect(knob)) return;
  const NSRect shape = NSInsetRect(knob, kKnobMargin, kKnobMargin);
  const CGFloat radius = MIN(NSWidth(shape), NSHeight(shape)) / 2;
  OHostFillRounded(shape, radius, hitPart == NSScrollerKnob ? OHostFaint : OHostBorder);
}

@end
