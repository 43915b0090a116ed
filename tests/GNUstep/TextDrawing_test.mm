// How texts are shortened is compared in WindowPictures_test.
#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

#include <cstdlib>

#import "BareWindow.h"

namespace {

NSTextField *FieldWithText(NSString *text) {
  NSTextField *field = [[[NSTextField alloc] initWithFrame:NSMakeRect(10, 10, 180, 24)] autorelease];
  [field setFont:[NSFont systemFontOfSize:13]];
  [field setStringValue:text];
  return field;
}

NSData *PictureOfField(NSString *text) {
  window_test::BareWindow window(NSMakeSize(200, 50));
  window.Add(FieldWithText(text));
  return [window.Picture() TIFFRepresentation];
}

}  // namespace

TEST(TextDrawing, ALetterAndItsAccentAreOneSign) {
  NSString *composed = @"Café Müller";
  EXPECT_TRUE([PictureOfField([composed decomposedStringWithCanonicalMapping]) isEqualToData:PictureOfField(composed)]);
  EXPECT_FALSE([PictureOfField(@"Cafe Muller") isEqualToData:PictureOfField(composed)]);
}

// Capital letters are where the middle is seen. They are nine or ten pixels high; the rest is above and below them.
TEST(TextDrawing, TheTextOfAFieldStandsInItsMiddle) {
  window_test::BareWindow window(NSMakeSize(200, 50));
  window.Add(FieldWithText(@"HHH"));
  NSBitmapImageRep *picture = window.Picture();
  NSInteger first = 0, last = 0;
  for (NSInteger y = 19; y < 37; ++y) {  // within the border
    for (NSInteger x = 14; x < 60; ++x) {
      if ([[picture colorAtX:x y:y] redComponent] > 0.4) continue;
      first = first > 0 ? first : y;
      last = y;
    }
  }
  const NSInteger top = 50 - 34, bottom = 50 - 10;
  EXPECT_GE(last - first, 8);
  EXPECT_LE(std::abs((first - top) - (bottom - 1 - last)), 1) << first << " to " << last;
}
