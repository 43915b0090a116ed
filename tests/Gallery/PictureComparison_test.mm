#import "PictureComparison.h"

#include <gtest/gtest.h>

#include <string>

#include "TemporaryFolder.h"

using window_test::ComparePictures;
using window_test::ReadPicture;

namespace {

constexpr int kWidth = 80;
constexpr int kHeight = 60;
constexpr int kWindow = 0xee;
constexpr int kControl = 0x40;

NSBitmapImageRep *Picture(int width = kWidth) {
  return window_test::EmptyPicture(width, kHeight);
}

void Fill(NSBitmapImageRep *picture, int left, int top, int right, int bottom, int shade) {
  NSUInteger samples[3] = {};
  for (NSUInteger &sample : samples) sample = static_cast<NSUInteger>(shade);
  for (int y = top; y < bottom; ++y) {
    for (int x = left; x < right; ++x) [picture setPixel:samples atX:x y:y];
  }
}

// A window with a dark control of 30 x 20 pixels, whose left edge has a shade of its own.
NSBitmapImageRep *Control(int left, int edge = (kWindow + kControl) / 2, int window = kWindow) {
  NSBitmapImageRep *picture = Picture();
  Fill(picture, 0, 0, kWidth, kHeight, window);
  Fill(picture, left, 10, left + 30, 30, kControl);
  Fill(picture, left, 10, left + 1, 30, edge);
  return picture;
}

NSString *Folder() {
  static const TemporaryFolder folder;
  return [NSString stringWithUTF8String:(folder / "differences").c_str()];
}

NSBitmapImageRep *Written(NSString *name) {
  return ReadPicture([Folder() stringByAppendingPathComponent:name]);
}

}  // namespace

TEST(PictureComparison, PassesTheSameAndAnEdgeOfAnotherShade) {
  const int edge = (kWindow + kControl) / 2;
  EXPECT_EQ(ComparePictures(Control(20), Control(20), Folder(), @"same"), "");
  EXPECT_EQ(ComparePictures(Control(20, edge + 20), Control(20), Folder(), @"same"), "");
  EXPECT_EQ(ComparePictures(Control(20, edge - 24), Control(20), Folder(), @"same"), "");
  EXPECT_EQ(Written(@"same-new.png"), nil) << "there is nothing to keep";
}

TEST(PictureComparison, FindsShiftsColoursAndSizes) {
  EXPECT_NE(ComparePictures(Control(21), Control(20), Folder(), @"shifted"), "");
  EXPECT_NE(ComparePictures(Control(20, 0x60), Control(20), Folder(), @"edge"), "") << "more than another shade";
  EXPECT_NE(ComparePictures(Control(20, (kWindow + kControl) / 2, kWindow - 2), Control(20), Folder(), @"window"), "")
      << "a little, but everywhere";
  EXPECT_NE(ComparePictures(Picture(kWidth + 1), Picture(), Folder(), @"wider"), "");
  NSBitmapImageRep *dot = Control(20);
  Fill(dot, 70, 50, 71, 51, 0);
  EXPECT_NE(ComparePictures(dot, Control(20), Folder(), @"dot"), "") << "a single pixel";
}

TEST(PictureComparison, KeepsTheNewPictureAndMarksWhatIsOff) {
  NSBitmapImageRep *shifted = Control(21);
  const std::string text = ComparePictures(shifted, Control(20), Folder(), @"kept");
  EXPECT_NE(text.find("60 pixels are off, by up to 174 levels"), std::string::npos) << text;
  EXPECT_NE(text.find("kept-difference.png"), std::string::npos) << text;
  EXPECT_EQ(ComparePictures(Written(@"kept-new.png"), shifted, Folder(), @"again"), "");
  NSBitmapImageRep *marked = Written(@"kept-difference.png");
  NSUInteger changed[4] = {}, faded[4] = {};
  [marked getPixel:changed atX:20 y:15];
  [marked getPixel:faded atX:35 y:15];
  EXPECT_EQ(changed[0], 255u);
  EXPECT_EQ(changed[1], 0u);
  EXPECT_EQ(faded[0], 191u + kControl / 4);
}
