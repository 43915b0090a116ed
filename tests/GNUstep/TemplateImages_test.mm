#import <Cocoa/Cocoa.h>

#include <gtest/gtest.h>

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

}  // namespace

TEST(TemplateImages, TheStopImageIsADiscInItsCorners) {
  @autoreleasepool {
    NSImage *stop = [NSImage imageNamed:@"NSStopProgressFreestandingTemplate"];
    ASSERT_NE(stop, nil);
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
  }
}
