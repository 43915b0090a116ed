// The fonts that the windows name are Apple's. Where they are missing, a free font of the same metrics stands in.
#import <Cocoa/Cocoa.h>

#include "Replacements.h"

namespace {

NSFont *(*original_font_with_name)(id, SEL, NSString *, CGFloat);

NSFont *FontWithFallback(id font_class, SEL selector, NSString *name, CGFloat size) {
  NSFont *font = original_font_with_name(font_class, selector, name, size);
  if (font || ![name hasPrefix:@"Helvetica"]) return font;
  NSString *fallback = [name hasSuffix:@"Bold"] ? @"LiberationSans-Bold" : @"LiberationSans";
  return original_font_with_name(font_class, selector, fallback, size);
}

}  // namespace

const Replacement font_with_name("NSFont", "+fontWithName:size:", FontWithFallback, &original_font_with_name);
