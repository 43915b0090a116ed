#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

TEST(FontFallback, FreeFontsStandInForHelveticaAlone) {
  @autoreleasepool {
    NSDictionary *fonts = @{
      @"HelveticaNeue" : @"LiberationSans",
      @"HelveticaNeue-Bold" : @"LiberationSans-Bold",
      @"LiberationMono" : @"LiberationMono"
    };
    for (NSString *name in fonts) {
      NSFont *font = [NSFont fontWithName:name size:11.5];
      EXPECT_STREQ([[font fontName] UTF8String], [[fonts objectForKey:name] UTF8String]);
    }
    EXPECT_EQ([NSFont fontWithName:@"OrvaneNoSuchFont-Bold" size:12], nil);
  }
}
