#import <Cocoa/Cocoa.h>

#include <gtest/gtest.h>

#include <string>

namespace {

std::string NameOf(NSFont *font) {
  return font ? [[font fontName] UTF8String] : "none";
}

}  // namespace

TEST(FontFallback, FreeFontsStandInForHelvetica) {
  @autoreleasepool {
    const struct {
      NSString *asked;
      std::string given;
    } cases[] = {{@"HelveticaNeue", "LiberationSans"}, {@"HelveticaNeue-Bold", "LiberationSans-Bold"}};
    for (const auto &expected : cases) {
      for (CGFloat size : {9.0, 11.5, 24.0}) {
        NSFont *font = [NSFont fontWithName:expected.asked size:size];
        EXPECT_EQ(NameOf(font), expected.given) << [expected.asked UTF8String];
        EXPECT_EQ([font pointSize], size) << [expected.asked UTF8String];
      }
    }
  }
}

TEST(FontFallback, OtherFontsAreWhatTheyAre) {
  @autoreleasepool {
    EXPECT_EQ(NameOf([NSFont fontWithName:@"LiberationMono" size:12]), "LiberationMono");
    EXPECT_EQ([NSFont fontWithName:@"OrvaneNoSuchFont" size:12], nil);
    EXPECT_EQ([NSFont fontWithName:@"OrvaneNoSuchFont-Bold" size:12], nil);
  }
}
