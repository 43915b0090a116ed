// AppKit ends a text that does not fit into its rectangle with an ellipsis, or takes out its middle, as the line break
// mode of its paragraph style says. GNUstep cuts it off, in the middle of a letter.
#import <Cocoa/Cocoa.h>

#include "MethodReplacement.h"
#include "Replacements.h"

namespace {

using DrawWithRect = void (*)(id, SEL, NSRect, NSStringDrawingOptions);
DrawWithRect original_draw_with_rect;

// The text without the composed characters from `kept` on, or, in the middle mode, without those around its middle.
NSAttributedString *Shortened(NSAttributedString *text, NSUInteger kept, NSLineBreakMode mode) {
  NSString *string = [text string];
  const NSUInteger length = [string length];
  const NSUInteger tail = mode == NSLineBreakByTruncatingMiddle ? kept / 2 : 0;
  NSUInteger from = kept - tail;
  NSUInteger to = length - tail;
  if (from < length) from = [string rangeOfComposedCharacterSequenceAtIndex:from].location;
  if (to < length) to = NSMaxRange([string rangeOfComposedCharacterSequenceAtIndex:to == 0 ? 0 : to - 1]);
  NSMutableAttributedString *shortened = [[text mutableCopy] autorelease];
  [shortened replaceCharactersInRange:NSMakeRange(from, to - from) withString:@"…"];
  return shortened;
}

// The longest form of the text that fits.
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

// The mode of a text of a single line that does not fit; NSLineBreakByClipping of any other.
NSLineBreakMode TruncationOf(NSAttributedString *text, CGFloat width) {
  if ([text length] < 2 || width <= 0) return NSLineBreakByClipping;
  NSParagraphStyle *style = [text attribute:NSParagraphStyleAttributeName atIndex:0 effectiveRange:NULL];
  const NSLineBreakMode mode = [style lineBreakMode];
  if (!style || (mode != NSLineBreakByTruncatingTail && mode != NSLineBreakByTruncatingMiddle)) {
    return NSLineBreakByClipping;
  }
  const bool fits = [text size].width <= width;
  const bool has_lines = [[text string] rangeOfString:@"\n"].location != NSNotFound;
  return fits || has_lines ? NSLineBreakByClipping : mode;
}

void DrawFitted(id text, SEL selector, NSRect rectangle, NSStringDrawingOptions options) {
  const NSLineBreakMode mode = TruncationOf(text, NSWidth(rectangle));
  if (mode == NSLineBreakByClipping) {
    original_draw_with_rect(text, selector, rectangle, options);
  } else {
    original_draw_with_rect(Fitted(text, NSWidth(rectangle), mode), selector, rectangle, options);
  }
}

}  // namespace

void InstallTextTruncation() {
  original_draw_with_rect =
      ReplaceInstanceMethod<DrawWithRect>("NSAttributedString", "drawWithRect:options:", DrawFitted);
}
