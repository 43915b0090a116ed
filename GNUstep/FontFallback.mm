// The fonts that the windows name are Apple's. Where they are missing, a free font of the same metrics stands in.
#import <Cocoa/Cocoa.h>

#include "Replacements.h"

namespace {

NSFont *(*original_font_with_name)(id, SEL, NSString *, CGFloat);

NSString *FallbackFontName(NSString *name) {
  if (![name hasPrefix:@"Helvetica"]) return nil;
  return [name hasSuffix:@"Bold"] ? @"LiberationSans-Bold" : @"LiberationSans";
}

NSFont *FontWithFallback(id font_class, SEL selector, NSString *name, CGFloat size) {
  NSFont *font = original_font_with_name(font_class, selector, name, size);
  NSString *fallback = font ? nil : FallbackFontName(name);
  return fallback ? original_font_with_name(font_class, selector, fallback, size) : font;
}

}  // namespace

const Replacement font_with_name("NSFont", "+fontWithName:size:", FontWithFallback, &original_font_with_name);
