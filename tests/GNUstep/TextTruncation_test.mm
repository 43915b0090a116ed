#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr CGFloat kWidth = 120;

NSAttributedString *Text(NSString *string, NSLineBreakMode mode = NSLineBreakByClipping) {
  NSMutableParagraphStyle *style = [[[NSMutableParagraphStyle alloc] init] autorelease];
  [style setLineBreakMode:mode];
  NSDictionary *attributes =
      @{NSParagraphStyleAttributeName : style, NSFontAttributeName : [NSFont systemFontOfSize:13]};
  return [[[NSAttributedString alloc] initWithString:string attributes:attributes] autorelease];
}

// What the text looks like in a rectangle of that width, beyond which there is room.
NSData *Drawn(NSAttributedString *text, CGFloat width) {
  const NSRect all = NSMakeRect(0, 0, kWidth + 40, 40);
  NSImage *canvas = [[[NSImage alloc] initWithSize:all.size] autorelease];
  [canvas lockFocus];
  [[NSColor whiteColor] set];
  NSRectFill(all);
  [text drawInRect:NSMakeRect(20, 10, width, 20)];
  NSBitmapImageRep *bitmap = [[[NSBitmapImageRep alloc] initWithFocusedViewRect:all] autorelease];
  [canvas unlockFocus];
  return [bitmap TIFFRepresentation];
}

void ExpectDrawnAs(NSString *expected, NSString *string, NSLineBreakMode mode, CGFloat width = kWidth) {
  EXPECT_TRUE([Drawn(Text(string, mode), width) isEqual:Drawn(Text(expected), width)]) << [string UTF8String];
}

}  // namespace

TEST(TextTruncation, EndsWhatDoesNotFitWithAnEllipsis) {
  NSString *text = @"Rohschnitt der zweiten Folge";
  NSUInteger kept = [text length];
  ASSERT_GT([Text(text) size].width, kWidth);
  NSString *shortened = nil;
  do {
    shortened = [[text substringToIndex:--kept] stringByAppendingString:@"…"];
  } while ([Text(shortened) size].width > kWidth);
  ExpectDrawnAs(shortened, text, NSLineBreakByTruncatingTail);
}

TEST(TextTruncation, LeavesWhatFits) {
  ExpectDrawnAs(@"Folge 2", @"Folge 2", NSLineBreakByTruncatingTail);
  ExpectDrawnAs(@"", @"", NSLineBreakByTruncatingTail);
  // A rectangle of the text's own width, which rounding has made narrower.
  for (NSString *text in @[ @"01", @"v1", @"2024" ]) {
    ExpectDrawnAs(text, text, NSLineBreakByTruncatingMiddle, std::nextafter([Text(text) size].width, 0));
  }
}
