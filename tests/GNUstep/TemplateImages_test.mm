#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

#include "TemporaryFolder.h"

namespace {

NSString *const kStop = @"NSStopProgressFreestandingTemplate";

// Makes a bundle known that holds the platform folder's images, and nothing else.
void UseBundleOfImages() {
  static const TemporaryFolder folder;
  const std::filesystem::path bundle = folder / "Images.bundle";
  std::filesystem::create_directory(bundle);
  std::filesystem::copy(ORVANE_PLATFORM_IMAGES, bundle / "Resources");
  ASSERT_NE([[NSBundle alloc] initWithPath:[NSString stringWithUTF8String:bundle.c_str()]], nil);
}

}  // namespace

TEST(TemplateImages, AreFoundInAnyBundleThatBringsThem) {
  @autoreleasepool {
    EXPECT_EQ([NSImage imageNamed:kStop], nil) << "no bundle brings it yet";
    UseBundleOfImages();
    NSImage *stop = [NSImage imageNamed:kStop];
    ASSERT_NE(stop, nil);
    EXPECT_EQ([NSImage imageNamed:kStop], stop);
    EXPECT_TRUE(NSEqualSizes([stop size], NSMakeSize(12, 12)));
    EXPECT_EQ([NSImage imageNamed:@"NSOrvaneNoSuchImage"], nil);
    EXPECT_EQ([NSImage imageNamed:nil], nil);
  }
}
