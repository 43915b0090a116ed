// The platform folder's truncated texts.
#import <Cocoa/Cocoa.h>

#include <gtest/gtest.h>

#include <cmath>

#import "DrawnText.h"

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

NSData *Drawn(NSAttributedString *text, CGFloat width) {
  return [DrawnText(text, NSMakeSize(kWidth + 40, 40), NSMakeRect(20, 10, width, 20)) TIFFRepresentation];
}

void ExpectDrawnAs(NSString *expected, NSString *string, NSLineBreakMode mode, CGFloat width = kWidth) {
  EXPECT_TRUE([Drawn(Text(string, mode), width) isEqual:Drawn(Text(expected, NSLineBreakByClipping), width)])
      << [string UTF8String];
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
  // A rectangle of the text's own width, which rounding has made narrower.
  for (NSString *text in @[ @"01", @"v1", @"2024" ]) {
    const CGFloat width = std::nextafter([Text(text, NSLineBreakByClipping) size].width, 0);
    ExpectDrawnAs(text, text, NSLineBreakByTruncatingMiddle, width);
  }
}
