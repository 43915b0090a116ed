// Texts drawn as AppKit does. A letter and its accent are one sign, as in the names of files of a Mac; GNUstep draws a
// question mark for the accent. AppKit ends a text that does not fit into its rectangle with an ellipsis, or takes out
// its middle, as the line break mode of its paragraph style says. GNUstep cuts it off, in the middle of a letter.
// The text of a field stands in its middle, as far from the edge as in pop-up buttons and text views; GNUstep sets it
// at the top.
#import <Cocoa/Cocoa.h>

#include "Replacements.h"

namespace {

void (*original_draw_in_rect)(id, SEL, NSRect);

// Points. The widths of a text and of a rectangle that was made for it may differ by rounding.
constexpr CGFloat kRounding = 0.01;

// The mode of a text of a single line that is to be shortened; NSLineBreakByClipping of any other.
NSLineBreakMode TruncationOf(NSAttributedString *text) {
  if ([text length] == 0) return NSLineBreakByClipping;
  NSParagraphStyle *style = [text attribute:NSParagraphStyleAttributeName atIndex:0 effectiveRange:NULL];
  const NSLineBreakMode mode = style ? [style lineBreakMode] : NSLineBreakByWordWrapping;
  const bool truncates = mode == NSLineBreakByTruncatingMiddle || mode == NSLineBreakByTruncatingTail;
  const bool has_lines = [[text string] rangeOfString:@"\n"].location != NSNotFound;
  return truncates && !has_lines ? mode : NSLineBreakByClipping;
}

// The text with the ellipsis in place of all but `kept` of its code units; whole characters only.
NSAttributedString *Shortened(NSAttributedString *text, NSUInteger kept, NSLineBreakMode mode) {
  const NSUInteger tail = mode == NSLineBreakByTruncatingMiddle ? kept / 2 : 0;
  const NSRange removed = NSMakeRange(kept - tail, [text length] - kept);
  NSMutableAttributedString *shortened = [[text mutableCopy] autorelease];
  [shortened replaceCharactersInRange:[[text string] rangeOfComposedCharacterSequencesForRange:removed]
                           withString:@"…"];
  return shortened;
}

// The longest form of the text that is at most `width` wide; at least the ellipsis.
NSAttributedString *Fitted(NSAttributedString *text, CGFloat width, NSLineBreakMode mode) {
  NSUInteger fits = 0;
  NSUInteger too_many = [text length];
  while (too_many - fits > 1) {
    const NSUInteger middle = fits + (too_many - fits) / 2;
    if ([Shortened(text, middle, mode) size].width <= width) {
      fits = middle;
    } else {
      too_many = middle;
    }
  }
  return Shortened(text, fits, mode);
}

// The text with one character for each letter and its accents; texts of several styles as they are.
NSAttributedString *Composed(NSAttributedString *text) {
  NSRange first = {};
  NSDictionary *attributes = [text length] > 0 ? [text attributesAtIndex:0 effectiveRange:&first] : nil;
  NSString *composed = [[text string] precomposedStringWithCanonicalMapping];
  if (first.length != [text length] || [composed length] == first.length) return text;
  return [[[NSAttributedString alloc] initWithString:composed attributes:attributes] autorelease];
}

void DrawFitted(id original, SEL selector, NSRect rectangle) {
  NSAttributedString *text = Composed(original);
  const NSLineBreakMode mode = TruncationOf(text);
  const bool fits = mode == NSLineBreakByClipping || [text size].width <= NSWidth(rectangle) + kRounding;
  original_draw_in_rect(fits ? text : Fitted(text, NSWidth(rectangle), mode), selector, rectangle);
}

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

const Replacement draw_in_rect("NSAttributedString", "drawInRect:", DrawFitted, &original_draw_in_rect);
const Replacement title_rect("NSTextFieldCell", "titleRectForBounds:", CentredTitleRect, &original_title_rect);
