// AppKit's own images that GNUstep lacks. The platform folder's module brings them along as resources of its bundle.
#import <Cocoa/Cocoa.h>

#include "Replacements.h"

namespace {

NSImage *(*original_image_named)(id, SEL, NSString *);

// Looks in every bundle: this code's own has no identifier that it could know, and in a test it is in the program.
NSImage *ImageNamedWithTemplates(id image_class, SEL selector, NSString *name) {
  NSImage *image = original_image_named(image_class, selector, name);
  // AppKit's names begin so. Others are the program's own and are not looked for in its plug-ins.
  if (image || ![name hasPrefix:@"NS"]) return image;
  for (NSBundle *bundle in [NSBundle allBundles]) {
    NSString *path = [bundle pathForResource:name ofType:@"png"];
    if (!path) continue;
    image = [[NSImage alloc] initWithContentsOfFile:path];
    [image setName:name];  // under which AppKit keeps it, and finds it the next time
    return image;
  }
  return nil;
}

}  // namespace

const Replacement image_named("NSImage", "+imageNamed:", ImageNamedWithTemplates, &original_image_named);
