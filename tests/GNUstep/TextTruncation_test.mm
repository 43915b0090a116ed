// How a text is cut is compared in WindowPictures_test.
#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

#include <cmath>

namespace {

NSAttributedString *Text(NSString *string, NSLineBreakMode mode) {
  NSMutableParagraphStyle *style = [[[NSMutableParagraphStyle alloc] init] autorelease];
  [style setLineBreakMode:mode];
  NSDictionary *attributes =
      @{NSParagraphStyleAttributeName : style, NSFontAttributeName : [NSFont systemFontOfSize:13]};
  return [[[NSAttributedString alloc] initWithString:string attributes:attributes] autorelease];
}

// What the text looks like in a rectangle of that width, beyond which there is room.
NSData *Drawn(NSAttributedString *text, CGFloat width) {
  const NSRect all = NSMakeRect(0, 0, 160, 40);
  NSImage *canvas = [[[NSImage alloc] initWithSize:all.size] autorelease];
  [canvas lockFocus];
  [[NSColor whiteColor] set];
  NSRectFill(all);
  [text drawInRect:NSMakeRect(20, 10, width, 20)];
  NSBitmapImageRep *bitmap = [[[NSBitmapImageRep alloc] initWithFocusedViewRect:all] autorelease];
  [canvas unlockFocus];
  return [bitmap TIFFRepresentation];
}

}  // namespace

TEST(TextTruncation, LeavesWhatFits) {
  for (NSString *string in @[ @"", @"01", @"v1", @"2024", @"Folge 2" ]) {
    NSAttributedString *plain = Text(string, NSLineBreakByClipping);
    // The text's own width, which rounding has made narrower.
    const CGFloat width = std::nextafter([plain size].width, 0);
    NSAttributedString *cut = Text(string, NSLineBreakByTruncatingMiddle);
    EXPECT_TRUE([Drawn(cut, width) isEqual:Drawn(plain, width)]) << [string UTF8String];
  }
}
