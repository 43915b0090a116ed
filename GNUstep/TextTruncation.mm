// AppKit ends a text that does not fit into its rectangle with an ellipsis, or takes out its middle, as the line break
// mode of its paragraph style says. GNUstep cuts it off, in the middle of a letter.
#import <Cocoa/Cocoa.h>

#include "MethodReplacement.h"
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

void DrawFitted(id text, SEL selector, NSRect rectangle) {
  const NSLineBreakMode mode = TruncationOf(text);
  const bool fits = mode == NSLineBreakByClipping || [text size].width <= NSWidth(rectangle) + kRounding;
  original_draw_in_rect(fits ? text : Fitted(text, NSWidth(rectangle), mode), selector, rectangle);
}

}  // namespace

const Replacement replacement([] {
  original_draw_in_rect = ReplaceInstanceMethod("NSAttributedString", "drawInRect:", DrawFitted);
});
