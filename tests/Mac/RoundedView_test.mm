#import "RoundedView.h"

#include <gtest/gtest.h>

#import "PluginBundle.h"
#include "PluginResources.h"

namespace {

// The pixels that a view of that type draws on a magenta window.
class Canvas {
 public:
  Canvas(int type, CGFloat width, CGFloat height) {
    UsePluginResources();
    window_ = [[NSWindow alloc] initWithContentRect:NSMakeRect(50, 50, width, height)
                                          styleMask:NSBorderlessWindowMask
                                            backing:NSBackingStoreBuffered
                                              defer:NO];
    [window_ setBackgroundColor:[NSColor colorWithDeviceRed:1 green:0 blue:1 alpha:1]];
    [window_ setReleasedWhenClosed:NO];
    RoundedView *view = [[[RoundedView alloc] initWithFrame:NSMakeRect(0, 0, width, height)] autorelease];
    [view setType:type];
    [window_ setContentView:view];
    [window_ orderFront:nil];
    [window_ display];
    [view lockFocus];
    bitmap_ = [[NSBitmapImageRep alloc] initWithFocusedViewRect:[view bounds]];
    [view unlockFocus];
  }

  ~Canvas() {
    [bitmap_ release];
    [window_ close];
    [window_ release];
  }

  // Red, green and blue of a pixel, counted from the top left.
  int Pixel(int x, int y) const { return PixelOf(bitmap_, x, y); }

  static int PixelOf(NSBitmapImageRep *bitmap, int x, int y) {
    NSUInteger samples[5] = {};
    [bitmap getPixel:samples atX:x y:y];
    return static_cast<int>(samples[0] << 16 | samples[1] << 8 | samples[2]);
  }

 private:
  NSWindow *window_;
  NSBitmapImageRep *bitmap_;
};

constexpr int kMagenta = 0xff00ff;

NSBitmapImageRep *Slice(NSString *name) {
  NSImage *image = PluginImage(name);
  EXPECT_NE(image, nil) << [name UTF8String];
  return static_cast<NSBitmapImageRep *>([[image representations] objectAtIndex:0]);
}

}  // namespace

TEST(RoundedView, EveryTypeDrawsFromEdgeToEdge) {
  for (int type = 0; type <= 18; ++type) {
    const Canvas canvas(type, 90, type >= 16 ? 10 : 32);
    const int middle = type >= 16 ? 5 : 16;
    EXPECT_NE(canvas.Pixel(0, middle), kMagenta) << type;
    EXPECT_NE(canvas.Pixel(45, middle), kMagenta) << type;
    EXPECT_NE(canvas.Pixel(89, middle), kMagenta) << type;
    EXPECT_EQ(canvas.Pixel(0, 0), kMagenta) << type << ": the corners are round";
  }
}

TEST(RoundedView, OtherTypesDrawNothing) {
  for (int type : {19, -1}) {
    const Canvas canvas(type, 40, 32);
    EXPECT_EQ(canvas.Pixel(20, 16), kMagenta) << type;
  }
}

// The slices appear unchanged at the ends, the centre goes on between them without a seam, and pressed looks differ.
TEST(RoundedView, StretchesOnlyTheCentre) {
  const Canvas canvas(RoundedViewTypeButtonBlueBig, 91, 32);
  NSBitmapImageRep *left = Slice(@"background_button_blue_left_big.png");
  const int cap = static_cast<int>([left pixelsWide]);
  for (int x = 1; x < cap; ++x) EXPECT_EQ(canvas.Pixel(x, 16), Canvas::PixelOf(left, x, 16)) << x;
  for (int x = cap; x < 91 - cap; ++x) EXPECT_EQ(canvas.Pixel(x, 16), canvas.Pixel(45, 16)) << x;
  EXPECT_EQ(canvas.Pixel(91 - cap, 16), canvas.Pixel(cap, 16));
  const Canvas pressed(RoundedViewTypeButtonBlueBigHighlighted, 91, 32);
  EXPECT_NE(pressed.Pixel(45, 16), canvas.Pixel(45, 16));
}

TEST(RoundedView, ANewViewHasTheFirstType) {
  EXPECT_EQ([[[[RoundedView alloc] initWithFrame:NSZeroRect] autorelease] type], 0);
}
