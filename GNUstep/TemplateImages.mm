// AppKit's named template images that GNUstep lacks, drawn as vectors.
#import <Cocoa/Cocoa.h>

#include "MethodReplacement.h"
#include "Replacements.h"

namespace {

using ImageNamed = NSImage *(*)(id, SEL, NSString *);
ImageNamed original_image_named;

NSString *const kStopImageName = @"NSStopProgressFreestandingTemplate";
constexpr CGFloat kStopImageSize = 12;  // points, AppKit's size of this image

}  // namespace

@interface OrvStopImage : NSObject
+ (void)drawStopImage:(NSCustomImageRep *)representation;
@end

@implementation OrvStopImage

+ (void)drawStopImage:(NSCustomImageRep *)representation {
  NSSize size = [representation size];
  [[NSColor colorWithCalibratedWhite:0.92 alpha:1.0] set];
  [[NSBezierPath bezierPathWithOvalInRect:NSMakeRect(0, 0, size.width, size.height)] fill];
  NSBezierPath *cross = [NSBezierPath bezierPath];
  CGFloat inset = size.width * 0.32;
  [cross moveToPoint:NSMakePoint(inset, inset)];
  [cross lineToPoint:NSMakePoint(size.width - inset, size.height - inset)];
  [cross moveToPoint:NSMakePoint(inset, size.height - inset)];
  [cross lineToPoint:NSMakePoint(size.width - inset, inset)];
  [cross setLineWidth:1.5];
  [[NSColor colorWithCalibratedWhite:0.25 alpha:1.0] set];
  [cross stroke];
}

@end

namespace {

NSImage *StopImage() {
  static NSImage *image = nil;
  if (image) return image;
  NSCustomImageRep *representation = [[NSCustomImageRep alloc] initWithDrawSelector:@selector(drawStopImage:)
                                                                           delegate:[OrvStopImage class]];
  [representation setSize:NSMakeSize(kStopImageSize, kStopImageSize)];
  image = [[NSImage alloc] initWithSize:NSMakeSize(kStopImageSize, kStopImageSize)];
  [image addRepresentation:representation];
  [representation release];
  return image;
}

NSImage *ImageNamedWithTemplates(id image_class, SEL selector, NSString *name) {
  if ([name isEqualToString:kStopImageName]) return StopImage();
  return original_image_named(image_class, selector, name);
}

}  // namespace

void InstallTemplateImages() {
  original_image_named = ReplaceClassMethod<ImageNamed>("NSImage", "imageNamed:", ImageNamedWithTemplates);
}
