#import "RoundedView.h"

#include <gtest/gtest.h>

#import "BareWindow.h"
#import "PictureComparison.h"
#import "PluginBundle.h"
#include "PluginResources.h"

#include <cmath>
#include <cstring>
#include <vector>

// Draws its background as a view does whose y axis points down.
@interface FlippedBackground : NSView {
 @public
  int type;
}
@end

@implementation FlippedBackground

- (BOOL)isFlipped {
  return YES;
}

- (void)drawRect:(NSRect)dirtyRect {
  (void)dirtyRect;
  DrawRoundedBackground(type, [self bounds], YES);
}

@end

namespace {

// What each type is made of: its images' names, with %@ for the slice, and whether it has nine of them. The grey text
// field has a left cap of its own.
struct Background {
  const char *images;
  bool nine_part = false;
};

const Background kBackgrounds[] = {
    {"background_textfield_white_small_%@"},
    {"background_textfield_white_%@"},
    {"background_textfield_white_big_%@", true},
    {"background_textfield_white_%@"},
    {"background_button_blue_%@_big"},
    {"background_button_blue_%@_big_highlighted"},
    {"background_button_blue_%@_small"},
    {"background_button_blue_%@_small_highlighted"},
    {"background_button_yellow_%@"},
    {"background_button_yellow_%@_highlighted"},
    {"background_button_gray_%@_small"},
    {"background_button_gray_%@_small_highlighted"},
    {"background_button_gray_%@_big"},
    {"background_button_gray_%@_big_highlighted"},
    {"background_combobox_gray_%@"},
    {"background_combobox_gray_small_%@"},
    {"background_progressbar_total_%@"},
    {"background_progressbar_uploaded_%@"},
    {"background_progressbar_converted_%@"},
};
constexpr int kTypes = 19;
static_assert(sizeof kBackgrounds / sizeof kBackgrounds[0] == kTypes);

constexpr int kMargin = 5;  // of window around the view
constexpr int kRoundingLevels = 2;
const double kWindow[3] = {255, 0, 255};

NSBitmapImageRep *Slice(int type, const char *slice) {
  NSString *name = [NSString stringWithFormat:[NSString stringWithUTF8String:kBackgrounds[type].images],
                                              [NSString stringWithUTF8String:slice]];
  if (type == RoundedViewTypeTextFieldGray && strcmp(slice, "left") == 0) name = @"background_textfield_grey_left";
  NSImage *image = PluginImage([name stringByAppendingPathExtension:@"png"]);
  EXPECT_NE(image, nil) << [name UTF8String];
  return static_cast<NSBitmapImageRep *>([[image representations] objectAtIndex:0]);
}

// The slices row by row; a three-part background has one row.
std::vector<NSBitmapImageRep *> Slices(int type) {
  const std::vector<const char *> three = {"left", "center", "right"};
  const std::vector<const char *> nine = {"topleft",   "topedge",    "topright",   "leftedge",   "center",
                                          "rightedge", "bottomleft", "bottomedge", "bottomright"};
  std::vector<NSBitmapImageRep *> slices;
  for (const char *name : kBackgrounds[type].nine_part ? nine : three) slices.push_back(Slice(type, name));
  return slices;
}

int CapsWidth(int type) {
  const auto slices = Slices(type);
  return static_cast<int>([slices[0] pixelsWide] + [slices[2] pixelsWide]);
}

// The height that a background has from its artwork; for one of any height, that of its caps.
int ArtworkHeight(int type) {
  const auto slices = Slices(type);
  return static_cast<int>([slices.front() pixelsHigh] + (slices.size() == 9 ? [slices.back() pixelsHigh] : 0));
}

// Along one side: which of the three parts holds that place, and the pixel of it. The middle part is its first pixel,
// again and again.
struct Place {
  size_t part;
  NSInteger pixel;
};

Place PlaceAt(NSInteger at, NSInteger length, NSInteger first, NSInteger last) {
  if (at < first) return {0, at};
  if (at >= length - last) return {2, at - (length - last)};
  return {1, 0};
}

// The slice's pixel over the window's colour.
void BlendPixel(NSBitmapImageRep *slice, NSInteger x, NSInteger y, NSUInteger result[3]) {
  NSUInteger samples[5] = {};
  [slice getPixel:samples atX:x y:y];
  const double alpha = [slice hasAlpha] ? static_cast<double>(samples[3]) / 255 : 1;
  const double factor = [slice bitmapFormat] & NSAlphaNonpremultipliedBitmapFormat ? alpha : 1;
  for (size_t i = 0; i < 3; ++i) {
    result[i] =
        static_cast<NSUInteger>(std::lround(factor * static_cast<double>(samples[i]) + (1 - alpha) * kWindow[i]));
  }
}

// What a background of that size looks like in its window, put together from the slices.
NSBitmapImageRep *Expected(int type, int width, int height) {
  const auto slices = Slices(type);
  const bool nine = slices.size() == 9;
  NSBitmapImageRep *picture = window_test::EmptyPicture(width + 2 * kMargin, height + 2 * kMargin);
  for (int y = -kMargin; y < height + kMargin; ++y) {
    for (int x = -kMargin; x < width + kMargin; ++x) {
      NSUInteger pixel[3] = {255, 0, 255};
      if (x >= 0 && x < width && y >= 0 && y < height) {
        const Place column = PlaceAt(x, width, [slices[0] pixelsWide], [slices[2] pixelsWide]);
        const Place row = nine ? PlaceAt(y, height, [slices[0] pixelsHigh], [slices[6] pixelsHigh]) : Place{0, y};
        BlendPixel(slices[3 * row.part + column.part], column.pixel, row.pixel, pixel);
      }
      [picture setPixel:pixel atX:x + kMargin y:y + kMargin];
    }
  }
  return picture;
}

// What the view shows on a magenta window, with a margin around it.
NSBitmapImageRep *Shown(NSView *view) {
  const NSSize size = NSInsetRect([view frame], -kMargin, -kMargin).size;
  window_test::BareWindow window(size, [NSColor colorWithDeviceRed:1 green:0 blue:1 alpha:1]);
  [view setFrameOrigin:NSMakePoint(kMargin, kMargin)];
  window.Add(view);
  return window.Picture();
}

NSView *BackgroundView(int type, int width, int height, bool flipped) {
  const NSRect frame = NSMakeRect(0, 0, width, height);
  if (flipped) {
    FlippedBackground *view = [[[FlippedBackground alloc] initWithFrame:frame] autorelease];
    view->type = type;
    return view;
  }
  RoundedView *view = [[[RoundedView alloc] initWithFrame:frame] autorelease];
  [view setType:type];
  return view;
}

void ExpectDrawnFromSlices(int type, int width, int height, bool flipped) {
  NSString *name =
      [NSString stringWithFormat:@"background-%d-%dx%d%@", type, width, height, flipped ? @"-flipped" : @""];
  EXPECT_EQ(
      window_test::ComparePictures(Shown(BackgroundView(type, width, height, flipped)), Expected(type, width, height),
                                   window_test::DifferencesFolder(), name, {kRoundingLevels, 1}),
      "")
      << [name UTF8String];
}

int PixelAt(NSBitmapImageRep *bitmap, NSInteger x, NSInteger y) {
  NSUInteger samples[5] = {};
  [bitmap getPixel:samples atX:x y:y];
  return static_cast<int>(samples[0] << 16 | samples[1] << 8 | samples[2]);
}

}  // namespace

class RoundedViewPixels : public testing::Test {
 protected:
  void SetUp() override { UsePluginResources(); }
};

// Caps pixel by pixel, the centre between them without a seam, and nothing outside; from caps alone to wide.
TEST_F(RoundedViewPixels, AreThoseOfTheSlicesAtEveryWidth) {
  for (int type = 0; type < kTypes; ++type) {
    const int caps = CapsWidth(type);
    for (int width : {caps, caps + 1, caps + 2, 91, 260}) {
      @autoreleasepool {
        ExpectDrawnFromSlices(type, width, ArtworkHeight(type), false);
        ExpectDrawnFromSlices(type, width, ArtworkHeight(type), true);
      }
    }
  }
}

TEST_F(RoundedViewPixels, OfTheTextAreaAreThoseOfTheSlicesAtEveryHeight) {
  for (int height : {21, 22, 26, 75, 120}) {
    @autoreleasepool {
      for (int width : {20, 21, 90, 200}) {
        ExpectDrawnFromSlices(RoundedViewTypeTextFieldWhiteBig, width, height, false);
        ExpectDrawnFromSlices(RoundedViewTypeTextFieldWhiteBig, width, height, true);
      }
    }
  }
}

// The slices themselves: what is stretched is the same all along, and goes on in the caps beside it.
TEST_F(RoundedViewPixels, OfTheSlicesGoOnFromOneToTheNext) {
  for (int type = 0; type < kTypes; ++type) {
    const auto slices = Slices(type);
    for (size_t row = 0; row < slices.size(); row += 3) {
      NSBitmapImageRep *left = slices[row], *center = slices[row + 1], *right = slices[row + 2];
      for (NSInteger y = 0; y < [center pixelsHigh]; ++y) {
        for (NSInteger x = 1; x < [center pixelsWide]; ++x) {
          EXPECT_EQ(PixelAt(center, x, y), PixelAt(center, 0, y)) << type;
        }
        EXPECT_EQ(PixelAt(left, [left pixelsWide] - 1, y), PixelAt(center, 0, y)) << type << " row " << y;
        EXPECT_EQ(PixelAt(right, 0, y), PixelAt(center, 0, y)) << type << " row " << y;
      }
    }
  }
}

TEST_F(RoundedViewPixels, AreNoneForOtherTypes) {
  NSBitmapImageRep *nothing = Shown([[[NSView alloc] initWithFrame:NSMakeRect(0, 0, 40, 32)] autorelease]);
  for (int type : {-1, kTypes}) {
    EXPECT_EQ(window_test::ComparePictures(Shown(BackgroundView(type, 40, 32, false)), nothing,
                                           window_test::DifferencesFolder(), @"background-none"),
              "")
        << type;
  }
}

TEST(RoundedView, ANewViewHasTheFirstType) {
  EXPECT_EQ([[[[RoundedView alloc] initWithFrame:NSZeroRect] autorelease] type], 0);
}
