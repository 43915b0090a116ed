// AppKit's own images that GNUstep lacks. The platform folder's module brings them along as resources of its bundle.
#import <Cocoa/Cocoa.h>

#include "MethodReplacement.h"
#include "Replacements.h"

namespace {

using ImageNamed = NSImage *(*)(id, SEL, NSString *);
ImageNamed original_image_named;

// Looks in every bundle: this code's own has no identifier that it could know, and in a test it is in the program. The
// images are kept, as AppKit keeps named images; what is not found is looked for again, since bundles are loaded later.
NSImage *ImageOfBundles(NSString *name) {
  static NSMutableDictionary *images = nil;
  if (!images) images = [[NSMutableDictionary alloc] init];
  NSImage *image = [images objectForKey:name];
  if (image) return image;
  for (NSBundle *bundle in [NSBundle allBundles]) {
    NSString *path = [bundle pathForResource:name ofType:@"png"];
    if (!path) continue;
    image = [[[NSImage alloc] initWithContentsOfFile:path] autorelease];
    if (!image) continue;
    [images setObject:image forKey:name];
    return image;
  }
  return nil;
}

NSImage *ImageNamedWithTemplates(id image_class, SEL selector, NSString *name) {
  NSImage *image = original_image_named(image_class, selector, name);
  // AppKit's names begin so. Others are the program's own and are not looked for in its plug-ins.
  return image || ![name hasPrefix:@"NS"] ? image : ImageOfBundles(name);
}

}  // namespace

void InstallTemplateImages() {
  original_image_named = ReplaceClassMethod<ImageNamed>("NSImage", "imageNamed:", ImageNamedWithTemplates);
}
