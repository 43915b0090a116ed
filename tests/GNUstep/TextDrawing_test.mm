// Where texts stand and how they are shortened is compared in WindowPictures_test.
#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

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
