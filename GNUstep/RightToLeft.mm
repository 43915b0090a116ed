// Arabic and Hebrew in texts that are drawn, not edited: in the order in which they are read, with joined letters.
// GNUstep draws every text from the left to the right, letter by letter. Each paragraph that fits into one line is put
// into its visual order before it is measured or drawn; one that has to be wrapped stays as it is, as do texts that are
// being edited.
#import <Cocoa/Cocoa.h>

#include <fribidi.h>

#include <vector>

#include "Characters.h"
#include "MethodReplacement.h"
#include "Replacements.h"

namespace {

// What the original methods draw is in visual order already; they may call each other.
thread_local bool in_visual_order = false;

// For as long as it lives, texts are drawn as they are.
class VisualOrder {
 public:
  VisualOrder() : before_(in_visual_order) { in_visual_order = true; }
  ~VisualOrder() { in_visual_order = before_; }

 private:
  const bool before_;
};

bool HasRightToLeft(NSString *text) {
  for (NSUInteger i = 0; i < [text length]; ++i) {
    const unichar unit = [text characterAtIndex:i];
    // Hebrew to Arabic Extended-A, and the presentation forms.
    if ((unit >= 0x590 && unit < 0x900) || (unit >= 0xfb1d && unit < 0xfe00) || (unit >= 0xfe70 && unit < 0xfeff)) {
      return true;
    }
  }
  return false;
}

// A paragraph's characters, and for each the index of its first code unit.
struct Characters {
  std::vector<FriBidiChar> values;
  std::vector<NSUInteger> places;
};

Characters CharactersOf(NSString *text, NSRange paragraph) {
  Characters characters;
  for (NSUInteger i = paragraph.location; i < NSMaxRange(paragraph);) {
    NSUInteger length = 0;
    characters.values.push_back(CharacterAt(text, i, &length));
    characters.places.push_back(i);
    i += length;
  }
  return characters;
}

// Puts the characters into visual order and gives the letters their joined forms. Returns false when there is no
// memory.
bool Reorder(Characters &characters) {
  const auto count = static_cast<FriBidiStrIndex>(characters.values.size());
  std::vector<FriBidiCharType> types(count);
  std::vector<FriBidiBracketType> brackets(count);
  std::vector<FriBidiLevel> levels(count);
  std::vector<FriBidiArabicProp> joining(count);
  std::vector<FriBidiStrIndex> order(count);
  FriBidiChar *values = characters.values.data();
  FriBidiParType direction = FRIBIDI_PAR_ON;
  fribidi_get_bidi_types(values, count, types.data());
  fribidi_get_bracket_types(values, count, types.data(), brackets.data());
  if (!fribidi_get_par_embedding_levels_ex(types.data(), brackets.data(), count, &direction, levels.data()))
    return false;
  fribidi_get_joining_types(values, count, joining.data());
  fribidi_join_arabic(types.data(), count, levels.data(), joining.data());
  fribidi_shape(FRIBIDI_FLAGS_DEFAULT | FRIBIDI_FLAGS_ARABIC, levels.data(), count, joining.data(), values);
  for (FriBidiStrIndex i = 0; i < count; ++i) order[i] = i;
  if (!fribidi_reorder_line(FRIBIDI_FLAGS_DEFAULT, types.data(), count, 0, direction, levels.data(), values,
                            order.data())) {
    return false;
  }
  std::vector<NSUInteger> places(count);
  for (FriBidiStrIndex i = 0; i < count; ++i) places[i] = characters.places[order[i]];
  characters.places = places;
  return true;
}

NSAttributedString *VisualParagraph(NSAttributedString *text, NSRange paragraph) {
  Characters characters = CharactersOf([text string], paragraph);
  if (!Reorder(characters)) return [text attributedSubstringFromRange:paragraph];
  NSMutableAttributedString *visual = [[[NSMutableAttributedString alloc] init] autorelease];
  for (size_t i = 0; i < characters.values.size(); ++i) {
    if (characters.values[i] == FRIBIDI_CHAR_FILL || IsInvisible(characters.values[i])) continue;
    NSDictionary *attributes = [text attributesAtIndex:characters.places[i] effectiveRange:NULL];
    NSAttributedString *letter =
        [[[NSAttributedString alloc] initWithString:StringOfCharacters(&characters.values[i], 1)
                                         attributes:attributes] autorelease];
    [visual appendAttributedString:letter];
  }
  return visual;
}

// The number of blanks at the beginning. They stay at the left: a tree is read by them.
NSUInteger IndentationOf(NSString *text, NSRange paragraph) {
  NSUInteger count = 0;
  while (count < paragraph.length && [text characterAtIndex:paragraph.location + count] == ' ') ++count;
  return count;
}

using Size = NSSize (*)(id, SEL);
Size original_size;

// The text as it is to be drawn with the methods of the original, in lines of at most `width`.
NSAttributedString *Visual(NSAttributedString *text, CGFloat width) {
  NSString *string = [text string];
  if (in_visual_order || !HasRightToLeft(string)) return text;
  VisualOrder order;
  NSMutableAttributedString *visual = [[[NSMutableAttributedString alloc] init] autorelease];
  for (NSUInteger i = 0; i < [string length];) {
    NSUInteger start, end, contents_end;
    [string getParagraphStart:&start end:&end contentsEnd:&contents_end forRange:NSMakeRange(i, 0)];
    const NSRange contents = NSMakeRange(i, contents_end - i);
    const NSUInteger indent = IndentationOf(string, contents);
    NSMutableAttributedString *paragraph =
        [[[text attributedSubstringFromRange:NSMakeRange(i, indent)] mutableCopy] autorelease];
    [paragraph appendAttributedString:VisualParagraph(text, NSMakeRange(i + indent, contents.length - indent))];
    const bool fits = original_size(paragraph, @selector(size)).width <= width;
    [visual appendAttributedString:fits ? paragraph : [text attributedSubstringFromRange:contents]];
    [visual appendAttributedString:[text attributedSubstringFromRange:NSMakeRange(contents_end, end - contents_end)]];
    i = end;
  }
  return visual;
}

const CGFloat kNoLimit = 1e7;

NSSize VisualSize(id text, SEL selector) {
  NSAttributedString *visual = Visual(text, kNoLimit);
  VisualOrder order;
  return original_size(visual, selector);
}

using DrawAtPoint = void (*)(id, SEL, NSPoint);
DrawAtPoint original_draw_at_point;

void DrawVisualAtPoint(id text, SEL selector, NSPoint point) {
  NSAttributedString *visual = Visual(text, kNoLimit);
  VisualOrder order;
  original_draw_at_point(visual, selector, point);
}

using DrawInRect = void (*)(id, SEL, NSRect);
DrawInRect original_draw_in_rect;

void DrawVisualInRect(id text, SEL selector, NSRect rect) {
  NSAttributedString *visual = Visual(text, NSWidth(rect));
  VisualOrder order;
  original_draw_in_rect(visual, selector, rect);
}

using BoundingRect = NSRect (*)(id, SEL, NSSize, NSStringDrawingOptions);
BoundingRect original_bounding_rect;

NSRect VisualBoundingRect(id text, SEL selector, NSSize size, NSStringDrawingOptions options) {
  NSAttributedString *visual = Visual(text, size.width);
  VisualOrder order;
  return original_bounding_rect(visual, selector, size, options);
}

NSAttributedString *WithAttributes(NSString *string, NSDictionary *attributes) {
  return [[[NSAttributedString alloc] initWithString:string attributes:attributes] autorelease];
}

using SizeWithAttributes = NSSize (*)(id, SEL, NSDictionary *);
SizeWithAttributes original_size_with_attributes;

NSSize VisualSizeWithAttributes(id string, SEL selector, NSDictionary *attributes) {
  if (!HasRightToLeft(string)) return original_size_with_attributes(string, selector, attributes);
  return [WithAttributes(string, attributes) size];
}

using DrawAtPointWithAttributes = void (*)(id, SEL, NSPoint, NSDictionary *);
DrawAtPointWithAttributes original_draw_at_point_with_attributes;

void DrawVisualAtPointWithAttributes(id string, SEL selector, NSPoint point, NSDictionary *attributes) {
  if (!HasRightToLeft(string)) {
    original_draw_at_point_with_attributes(string, selector, point, attributes);
  } else {
    [WithAttributes(string, attributes) drawAtPoint:point];
  }
}

}  // namespace

void InstallRightToLeft() {
  original_size = ReplaceInstanceMethod<Size>("NSAttributedString", "size", VisualSize);
  original_draw_at_point = ReplaceInstanceMethod<DrawAtPoint>("NSAttributedString", "drawAtPoint:", DrawVisualAtPoint);
  original_draw_in_rect = ReplaceInstanceMethod<DrawInRect>("NSAttributedString", "drawInRect:", DrawVisualInRect);
  original_bounding_rect =
      ReplaceInstanceMethod<BoundingRect>("NSAttributedString", "boundingRectWithSize:options:", VisualBoundingRect);
  original_size_with_attributes =
      ReplaceInstanceMethod<SizeWithAttributes>("NSString", "sizeWithAttributes:", VisualSizeWithAttributes);
  original_draw_at_point_with_attributes = ReplaceInstanceMethod<DrawAtPointWithAttributes>(
      "NSString", "drawAtPoint:withAttributes:", DrawVisualAtPointWithAttributes);
}
