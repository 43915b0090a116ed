#import "TagButton.h"

#include <gtest/gtest.h>

#include "PluginResources.h"
#import "RoundedView.h"

namespace {

TagButton *ChipWithTitle(NSString *title) {
  UsePluginResources();
  TagButton *chip = [[[TagButton alloc] initWithFrame:NSMakeRect(7, 9, 0, 26)] autorelease];
  [chip setTitleString:title];
  return chip;
}

CGFloat TextWidth(TagButton *chip) {
  return [[[chip titleLabel] attributedStringValue] size].width;
}

// A text at least that wide.
NSString *TextOfWidth(CGFloat width) {
  NSString *text = @"i";
  while (TextWidth(ChipWithTitle(text)) <= width) text = [text stringByAppendingString:@"i"];
  return text;
}

}  // namespace

TEST(TagButton, SizesItselfToItsText) {
  TagButton *chip = ChipWithTitle(@"night shoot");
  const CGFloat width = TextWidth(chip);
  const CGFloat height = [[[chip titleLabel] attributedStringValue] size].height;
  ASSERT_GT(width, 20);
  EXPECT_TRUE(NSEqualRects([chip frame], NSMakeRect(7, 9, width + 45, 26)));
  EXPECT_TRUE(NSEqualRects([[chip titleLabel] frame], NSMakeRect(10, (26 - height) / 2 - 3, width + 5, height)));
  EXPECT_TRUE(NSEqualRects([[chip backgroundView] frame], [chip bounds]));
  EXPECT_TRUE(NSEqualRects([[chip deleteImageView] frame], NSMakeRect(width + 45 - 18, 7, 12, 12)));
  EXPECT_NE([[chip deleteImageView] image], nil);
  EXPECT_EQ([[[chip titleLabel] font] pointSize], 12);
  EXPECT_EQ(NSWidth([ChipWithTitle(@"") frame]), 45) << "without a text all is margin";
}

TEST(TagButton, CutsATextAt260Points) {
  TagButton *chip = ChipWithTitle(TextOfWidth(260));
  EXPECT_EQ(NSWidth([[chip titleLabel] frame]), 265);
  EXPECT_EQ(NSWidth([chip frame]), 305);
  EXPECT_EQ([[[chip titleLabel] cell] lineBreakMode], NSLineBreakByTruncatingTail);
}
