#import <Cocoa/Cocoa.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#import "DrawnText.h"

namespace {

const NSInteger kWidth = 120;
const NSInteger kHeight = 40;

NSString *const kFont = @"LiberationSans";

// Which points are dark where the text is drawn in black on white.
std::vector<bool> InkOf(NSString *text) {
  NSBitmapImageRep *bitmap =
      DrawnText(TextInFont(text, kFont), NSMakeSize(kWidth, kHeight), NSMakeRect(10, 0, kWidth - 10, kHeight - 10));
  std::vector<bool> ink;
  for (NSInteger y = 0; y < kHeight; ++y) {
    for (NSInteger x = 0; x < kWidth; ++x) ink.push_back(Darkness(bitmap, x, y) > 127);
  }
  return ink;
}

// The columns of points from the leftmost ink to the rightmost.
int WidthOfInk(const std::vector<bool> &ink) {
  int first = kWidth, last = -1;
  for (int i = 0; i < static_cast<int>(ink.size()); ++i) {
    if (!ink[i]) continue;
    first = std::min(first, i % static_cast<int>(kWidth));
    last = std::max(last, i % static_cast<int>(kWidth));
  }
  return last < first ? 0 : last - first + 1;
}

CGFloat WidthOf(NSString *text) {
  return [TextInFont(text, kFont) size].width;
}

}  // namespace

// Boxes and question marks for what no font has would all look the same.
TEST(FontSubstitution, DifferentCharactersLookDifferent) {
  @autoreleasepool {
    NSArray *pairs =
        @[ @[ @"中", @"文" ], @[ @"カ", @"メ" ], @[ @"م", @"ح" ], @[ @"🎬", @"😀" ], @[ @"א", @"ש" ], @[ @"ก", @"ข" ] ];
    for (NSArray *pair in pairs) {
      const auto one = InkOf([pair objectAtIndex:0]);
      const auto other = InkOf([pair objectAtIndex:1]);
      EXPECT_GT(WidthOfInk(one), 3) << [[pair objectAtIndex:0] UTF8String];
      EXPECT_GT(WidthOfInk(other), 3) << [[pair objectAtIndex:1] UTF8String];
      EXPECT_NE(one, other) << [[pair objectAtIndex:0] UTF8String];
      EXPECT_NE(one, InkOf(@"?"));
    }
  }
}

TEST(FontSubstitution, TextsAreMeasuredAsTheyAreDrawn) {
  @autoreleasepool {
    for (NSString *text in @[ @"中文字", @"カメラ", @"🎬😀🎬", @"a🎬中" ]) {
      const int ink = WidthOfInk(InkOf(text));
      EXPECT_NEAR(WidthOf(text), ink, 5) << [text UTF8String];
      EXPECT_GT(ink, 20) << [text UTF8String];
    }
    EXPECT_NEAR(WidthOf(@"🎬🎬"), 2 * WidthOf(@"🎬"), 2) << "a pair of code units is one character";
    EXPECT_NEAR(WidthOf(@"中中中"), 48, 3) << "ideographs are as wide as the font is high";
  }
}

TEST(FontSubstitution, WhatIsInvisibleTakesNoRoom) {
  @autoreleasepool {
    EXPECT_EQ(InkOf(@"❤\uFE0F"), InkOf(@"❤"));
    EXPECT_NEAR(WidthOf(@"👨\u200D👩"), WidthOf(@"👨") + WidthOf(@"👩"), 2);
    EXPECT_NEAR(WidthOf(@"a\u200Bb"), WidthOf(@"ab"), 1);
  }
}

TEST(FontSubstitution, LatinTextKeepsItsFont) {
  @autoreleasepool {
    NSTextView *view = [[[NSTextView alloc] initWithFrame:NSMakeRect(0, 0, 200, 100)] autorelease];
    NSFont *font = [NSFont fontWithName:@"LiberationSans" size:13];
    [view setFont:font];
    [view setString:@"ab中cd"];
    const auto name_at = [&](NSUInteger index) {
      NSFont *used = [[view textStorage] attribute:NSFontAttributeName atIndex:index effectiveRange:NULL];
      return std::string([[used fontName] UTF8String]);
    };
    EXPECT_EQ(name_at(0), "LiberationSans");
    EXPECT_NE(name_at(2), "LiberationSans");
    EXPECT_EQ(name_at(3), "LiberationSans");
    // What is typed after an ideograph inherits its attributes.
    [view setSelectedRange:NSMakeRange(3, 0)];
    [view insertText:@"xy"];
    EXPECT_EQ(name_at(2 + 1), "LiberationSans");
    EXPECT_EQ(name_at(2 + 2), "LiberationSans");
  }
}

TEST(FontSubstitution, HalfAPairDoesNoHarm) {
  @autoreleasepool {
    // A text view that deletes one code unit leaves such a text.
    for (NSUInteger deleted : {2, 3}) {
      NSMutableString *text = [NSMutableString stringWithString:@"ab🎬"];
      [text deleteCharactersInRange:NSMakeRange(deleted, 1)];
      ASSERT_EQ([text length], 3u);
      EXPECT_GE(WidthOf(text), WidthOf(@"ab"));
      EXPECT_GE(WidthOfInk(InkOf(text)), WidthOfInk(InkOf(@"ab")));
    }
  }
}
