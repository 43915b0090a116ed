// The platform folder's truncated texts.
#import <Cocoa/Cocoa.h>

#include <gtest/gtest.h>

#import "BareWindow.h"
#import "PictureComparison.h"

static constexpr CGFloat kWidth = 120;

// Draws a text in black on white, with room around it.
@interface TruncatedText : NSView {
 @public
  NSAttributedString *text;
}
@end

@implementation TruncatedText
- (void)drawRect:(NSRect)rect {
  [[NSColor whiteColor] set];
  NSRectFill(rect);
  [text drawInRect:NSMakeRect(20, 10, kWidth, 20)];
}
@end

namespace {

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
  const NSRect frame = NSMakeRect(0, 0, kWidth + 40, 40);
  window_test::BareWindow window(frame.size);
  TruncatedText *view = [[[TruncatedText alloc] initWithFrame:frame] autorelease];
  view->text = text;
  window.Add(view);
  return window.Picture();
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

TEST(TextTruncation, KeepsBothEndsWhenTheMiddleGoes) {
  NSString *text = @"Rohschnitt der zweiten Folge, 2";
  NSUInteger kept = [text length];
  NSString *shortened = nil;
  do {
    --kept;
    const NSUInteger tail = kept / 2;
    shortened = [NSString
        stringWithFormat:@"%@…%@", [text substringToIndex:kept - tail], [text substringFromIndex:[text length] - tail]];
  } while (!Fits(shortened));
  ASSERT_TRUE([shortened hasSuffix:@"Folge, 2"]) << [shortened UTF8String];
  ExpectDrawnAs(shortened, text, NSLineBreakByTruncatingMiddle);
}

TEST(TextTruncation, LeavesWhatFits) {
  ExpectDrawnAs(@"Folge 2", @"Folge 2", NSLineBreakByTruncatingTail);
  ExpectDrawnAs(@"", @"", NSLineBreakByTruncatingTail);
}
