#import <Cocoa/Cocoa.h>

#include <gtest/gtest.h>

#include "TemporaryFolder.h"

namespace {

// Draws the image and returns how much of the drawn area is opaque, from 0 to 1.
double Coverage(NSImage *image) {
  const NSInteger side = 24;
  NSImage *canvas = [[[NSImage alloc] initWithSize:NSMakeSize(side, side)] autorelease];
  [canvas lockFocus];
  [[NSColor clearColor] set];
  NSRectFill(NSMakeRect(0, 0, side, side));
  [image drawInRect:NSMakeRect(0, 0, side, side)
           fromRect:NSZeroRect
          operation:NSCompositingOperationSourceOver
           fraction:1.0];
  NSBitmapImageRep *bitmap =
      [[[NSBitmapImageRep alloc] initWithFocusedViewRect:NSMakeRect(0, 0, side, side)] autorelease];
  [canvas unlockFocus];
  int opaque = 0;
  for (NSInteger y = 0; y < side; ++y) {
    for (NSInteger x = 0; x < side; ++x) {
      if ([[bitmap colorAtX:x y:y] alphaComponent] > 0.9) ++opaque;
    }
  }
  return static_cast<double>(opaque) / (side * side);
}

// Makes a bundle known that holds the platform folder's images, and nothing else.
void UseBundleOfImages() {
  static const TemporaryFolder folder;
  NSString *path = [NSString stringWithUTF8String:(folder / "Images.bundle").c_str()];
  NSFileManager *files = [NSFileManager defaultManager];
  ASSERT_TRUE([files createDirectoryAtPath:path withIntermediateDirectories:YES attributes:nil error:NULL]);
  ASSERT_TRUE([files copyItemAtPath:@ORVANE_PLATFORM_IMAGES
                             toPath:[path stringByAppendingPathComponent:@"Resources"]
                              error:NULL]);
  static NSBundle *bundle = nil;
  bundle = [[NSBundle alloc] initWithPath:path];
  ASSERT_NE(bundle, nil);
}

}  // namespace

TEST(TemplateImages, TheStopImageOfABundleIsADiscInItsCorners) {
  @autoreleasepool {
    EXPECT_EQ([NSImage imageNamed:@"NSStopProgressFreestandingTemplate"], nil) << "no bundle brings it yet";
    UseBundleOfImages();
    NSImage *stop = [NSImage imageNamed:@"NSStopProgressFreestandingTemplate"];
    ASSERT_NE(stop, nil);
    EXPECT_EQ([NSImage imageNamed:@"NSStopProgressFreestandingTemplate"], stop);
    EXPECT_EQ([stop size].width, 12);
    EXPECT_EQ([stop size].height, 12);
    const double coverage = Coverage(stop);
    EXPECT_GT(coverage, 0.6);
    EXPECT_LT(coverage, 0.95) << "a disc leaves its square's corners open";
  }
}

TEST(TemplateImages, OtherNamesFindWhatTheyFound) {
  @autoreleasepool {
    NSImage *own = [[[NSImage alloc] initWithSize:NSMakeSize(3, 3)] autorelease];
    ASSERT_TRUE([own setName:@"OrvaneTestImage"]);
    EXPECT_EQ([NSImage imageNamed:@"OrvaneTestImage"], own);
    [own setName:nil];
    EXPECT_EQ([NSImage imageNamed:@"OrvaneNoSuchImage"], nil);
    EXPECT_EQ([NSImage imageNamed:@"NSOrvaneNoSuchImage"], nil);
    EXPECT_EQ([NSImage imageNamed:nil], nil);
  }
}
