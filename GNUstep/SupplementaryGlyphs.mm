// Characters beyond the first 65,536, among them most emoji. GNUstep takes each pair of UTF-16 code units for one
// glyph, but finds it only by the first half, and its cairo back end measures and draws only the lower 16 bits of a
// glyph's number, which is that of the character.
#import <Cocoa/Cocoa.h>

#include <cairo.h>

#include <algorithm>
#include <iterator>
#include <vector>

#include "Characters.h"
#include "MethodReplacement.h"
#include "Replacements.h"

namespace {

using InsertGlyphs = void (*)(id, SEL, const NSGlyph *, NSUInteger, NSUInteger, NSUInteger);
InsertGlyphs original_insert_glyphs;

using AdvancementForGlyph = NSSize (*)(id, SEL, NSGlyph);
AdvancementForGlyph original_advancement_for_glyph;

using BoundingRectForGlyph = NSRect (*)(id, SEL, NSGlyph);
BoundingRectForGlyph original_bounding_rect_for_glyph;

using DrawGlyphs = void (*)(id, SEL, const NSGlyph *, int, cairo_t *);
DrawGlyphs original_draw_glyphs;

bool IsSupplementary(NSGlyph glyph) {
  return glyph >= kFirstSupplementaryCharacter && glyph < NSControlGlyph;
}

// The glyph of the character at the index; `glyph`, which GNUstep has found, when that is right.
NSGlyph GlyphAt(NSTextStorage *storage, NSUInteger index, NSGlyph glyph) {
  NSString *text = [storage string];
  if (index >= [text length]) return glyph;
  NSUInteger units = 0;
  const UTF32Char character = CharacterAt(text, index, &units);
  if (IsInvisible(character)) return NSControlGlyph;
  if (character < kFirstSupplementaryCharacter) return glyph;
  NSFont *font = [storage attribute:NSFontAttributeName atIndex:index effectiveRange:NULL];
  return [[font coveredCharacterSet] longCharacterIsMember:character] ? character : glyph;
}

// Glyphs come in stretches, one for each code unit; a pair, which has but one, ends its stretch.
void InsertWholeGlyphs(id manager, SEL selector, const NSGlyph *glyphs, NSUInteger length, NSUInteger glyph_index,
                       NSUInteger character_index) {
  NSTextStorage *storage = [manager textStorage];
  std::vector<NSGlyph> whole(glyphs, glyphs + length);
  for (NSUInteger i = 0; i < length; ++i) whole[i] = GlyphAt(storage, character_index + i, whole[i]);
  original_insert_glyphs(manager, selector, whole.data(), length, glyph_index, character_index);
}

// The font that the back end measures and draws with, or null when it could not be made.
cairo_scaled_font_t *ScaledFont(id font_info) {
  void *font = nullptr;
  object_getInstanceVariable(font_info, "_scaled", &font);
  return static_cast<cairo_scaled_font_t *>(font);
}

// The glyph's measures by cairo, in points, y downwards.
cairo_text_extents_t Measure(id font_info, NSGlyph glyph) {
  cairo_text_extents_t extents = {};
  if (cairo_scaled_font_t *font = ScaledFont(font_info)) {
    cairo_scaled_font_text_extents(font, [StringOfCharacters(&glyph, 1) UTF8String], &extents);
  }
  return extents;
}

NSSize AdvancementForWholeGlyph(id font_info, SEL selector, NSGlyph glyph) {
  if (!IsSupplementary(glyph)) {
    return original_advancement_for_glyph(font_info, selector, glyph);
  }
  return NSMakeSize(Measure(font_info, glyph).x_advance, 0);
}

NSRect BoundingRectForWholeGlyph(id font_info, SEL selector, NSGlyph glyph) {
  if (!IsSupplementary(glyph)) {
    return original_bounding_rect_for_glyph(font_info, selector, glyph);
  }
  const cairo_text_extents_t extents = Measure(font_info, glyph);
  return NSMakeRect(extents.x_bearing, -extents.y_bearing - extents.height, extents.width, extents.height);
}

void DrawWholeGlyphs(id font_info, SEL selector, const NSGlyph *glyphs, int length, cairo_t *cairo) {
  if (std::none_of(glyphs, glyphs + length, IsSupplementary)) {
    original_draw_glyphs(font_info, selector, glyphs, length, cairo);
    return;
  }
  cairo_scaled_font_t *font = ScaledFont(font_info);
  if (!font) return;
  std::vector<UTF32Char> characters;
  std::copy_if(glyphs, glyphs + length, std::back_inserter(characters),
               [](NSGlyph glyph) { return glyph != NSControlGlyph && glyph != NSNullGlyph; });
  cairo_set_scaled_font(cairo, font);
  cairo_show_text(cairo, [StringOfCharacters(characters.data(), characters.size()) UTF8String]);
}

}  // namespace

void InstallSupplementaryGlyphs() {
  original_insert_glyphs = ReplaceInstanceMethod<InsertGlyphs>(
      "GSLayoutManager", "insertGlyphs:length:forStartingGlyphAtIndex:characterIndex:", InsertWholeGlyphs);
  original_advancement_for_glyph =
      ReplaceInstanceMethod<AdvancementForGlyph>("CairoFontInfo", "advancementForGlyph:", AdvancementForWholeGlyph);
  original_bounding_rect_for_glyph =
      ReplaceInstanceMethod<BoundingRectForGlyph>("CairoFontInfo", "boundingRectForGlyph:", BoundingRectForWholeGlyph);
  original_draw_glyphs = ReplaceInstanceMethod<DrawGlyphs>("CairoFontInfo", "drawGlyphs:length:on:", DrawWholeGlyphs);
}
