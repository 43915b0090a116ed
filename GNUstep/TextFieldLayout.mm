// Where the text of a field stands. GNUstep sets it at the field's top; here it is in the middle, and as far from the
// edge as in pop-up buttons and text views.
#import <Cocoa/Cocoa.h>

#include "MethodReplacement.h"
#include "Replacements.h"

namespace {

constexpr CGFloat kSideMargin = 2;  // points, beside those that GNUstep leaves

NSRect (*original_title_rect)(id, SEL, NSRect);

NSRect CentredTitleRect(id cell, SEL selector, NSRect bounds) {
  NSRect rect = original_title_rect(cell, selector, bounds);
  if (![cell isBezeled]) return rect;
  const CGFloat line = ceil([[cell font] defaultLineHeightForFont]);
  return NSMakeRect(NSMinX(rect) + kSideMargin, NSMinY(rect) + floor((NSHeight(rect) - line) / 2),
                    NSWidth(rect) - 2 * kSideMargin, line);
}

}  // namespace

const Replacement replacement([] {
  original_title_rect = ReplaceInstanceMethod("NSTextFieldCell", "titleRectForBounds:", CentredTitleRect);
});
