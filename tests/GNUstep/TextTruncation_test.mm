// The platform folder's truncated texts.
#import <Cocoa/Cocoa.h>

#include <gtest/gtest.h>

#import "DrawnText.h"
#import "PictureComparison.h"

namespace {

constexpr CGFloat kWidth = 120;

NSAttributedString *Text(NSString *string, NSLineBreakMode mode) {
  NSMutableParagraphStyle *style = [[[NSMutableParagraphStyle alloc] init] autorelease];
  [style setLineBreakMode:mode];
  return [[[NSAttributedString alloc] initWithString:string
                                          attributes:@{
                                            NSParagraphStyleAttributeName : style,
                                            NSFontAttributeName : [NSFont fontWithName:@"HelveticaNeue" size:13]
                                          }] autorelease];
}

NSBitmapImageRep *Drawn(NSAttributedString *text) {
  return DrawnText(text, NSMakeSize(kWidth + 40, 40), NSMakeRect(20, 10, kWidth, 20));
}

void ExpectDrawnAs(NSString *expected, NSString *string, NSLineBreakMode mode) {
  const std::string difference =
      window_test::ComparePictures(Drawn(Text(string, mode)), Drawn(Text(expected, NSLineBreakByClipping)),
                                   window_test::DifferencesFolder(), @"truncation", {0, 0});
  EXPECT_EQ(difference, "") << [string UTF8String];
}

bool Fits(NSString *string) {
  return [Text(string, NSLineBreakByClipping) size].width <= kWidth;
}

// The longest beginning of the string that fits with an ellipsis behind it.
NSString *Beginning(NSString *string) {
  NSUInteger kept = [string length];
  NSString *shortened = nil;
  do {
    shortened = [[string substringToIndex:--kept] stringByAppendingString:@"…"];
  } while (!Fits(shortened));
  return shortened;
}

}  // namespace

TEST(TextTruncation, EndsWhatDoesNotFitWithAnEllipsis) {
  NSString *text = @"Rohschnitt der zweiten Folge";
  ASSERT_FALSE(Fits(text));
  ExpectDrawnAs(Beginning(text), text, NSLineBreakByTruncatingTail);
}

TEST(TextTruncation, LeavesWhatFits) {
  ExpectDrawnAs(@"Folge 2", @"Folge 2", NSLineBreakByTruncatingTail);
  ExpectDrawnAs(@"", @"", NSLineBreakByTruncatingTail);
}
