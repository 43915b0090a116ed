#import <Cocoa/Cocoa.h>

#include <gtest/gtest.h>

#include <vector>

#import "DrawnText.h"

namespace {

const NSInteger kWidth = 160;
const NSInteger kHeight = 80;

NSString *const kFont = @"DejaVuSans";

// The columns' darkness, of what is drawn into a rectangle that wide.
std::vector<int> Columns(NSString *text, CGFloat width = kWidth) {
  NSBitmapImageRep *bitmap =
      DrawnText(TextInFont(text, kFont), NSMakeSize(kWidth, kHeight), NSMakeRect(0, 0, width, kHeight));
  std::vector<int> columns(kWidth);
  for (NSInteger y = 0; y < kHeight; ++y) {
    for (NSInteger x = 0; x < kWidth; ++x) columns[x] += Darkness(bitmap, x, y);
  }
  return columns;
}

CGFloat WidthOf(NSString *text) {
  return [TextInFont(text, kFont) size].width;
}

}  // namespace

// U+202E draws what follows from the right to the left, and U+202D from the left to the right, whatever it is.
TEST(RightToLeft, TextsAreDrawnInTheOrderInWhichTheyAreRead) {
  @autoreleasepool {
    EXPECT_EQ(Columns(@"\u05D0\u05D1\u05D2"), Columns(@"\u202D\u05D2\u05D1\u05D0")) << "Hebrew";
    EXPECT_NE(Columns(@"\u05D0\u05D1\u05D2"), Columns(@"\u05D2\u05D1\u05D0"));
    EXPECT_EQ(Columns(@"Film \u05D0\u05D1 2"), Columns(@"\u202DFilm 2 \u05D1\u05D0")) << "numbers run on";
    EXPECT_EQ(Columns(@"(\u05D0)"), Columns(@"\u202D(\u05D0)")) << "brackets are mirrored";
    EXPECT_EQ(Columns(@"   \u05D0\u05D1"), Columns(@"\u202D   \u05D1\u05D0")) << "an indentation stays";
  }
}

TEST(RightToLeft, ArabicLettersAreJoined) {
  @autoreleasepool {
    // The presentation forms of meem at the beginning, hah in the middle and meem at the end.
    EXPECT_EQ(Columns(@"\u0645\u062D\u0645"), Columns(@"\u202D\uFEE2\uFEA4\uFEE3"));
    EXPECT_EQ(Columns(@"\u0644\u0627"), Columns(@"\uFEFB")) << "lam and alef are one";
  }
}

TEST(RightToLeft, ParagraphsAreOrderedEachForItself) {
  @autoreleasepool {
    EXPECT_EQ(Columns(@"a\n\u05D0\u05D1"), Columns(@"a\n\u202D\u05D1\u05D0"));
    EXPECT_NEAR(WidthOf(@"\u05D0\u05D1\u05D2"), WidthOf(@"\u05D0") + WidthOf(@"\u05D1") + WidthOf(@"\u05D2"), 3);
  }
}

TEST(RightToLeft, OtherTextsAreLeftAlone) {
  @autoreleasepool {
    NSString *text = @"Größe (neu) – Łódź";
    EXPECT_EQ(WidthOf(text), WidthOf([text stringByAppendingString:@"\u200F"])) << "a mark alone takes no room";
    EXPECT_EQ(Columns(@""), std::vector<int>(kWidth, 0));
  }
}
