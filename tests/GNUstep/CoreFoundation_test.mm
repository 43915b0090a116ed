// Files and paths are looked at in ExportControllerPaths_test.
#include <CoreFoundation/CoreFoundation.h>
#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <string>

namespace {

// Nil when the bytes are no text, autoreleased.
CFStringRef FromUtf8(const std::string &text) {
  CFStringRef made = CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8 *>(text.data()),
                                             static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8, false);
  return (CFStringRef)[(id)made autorelease];
}

}  // namespace

TEST(CoreFoundation, ConversionStopsAtTheLastWholeCharacter) {
  @autoreleasepool {
    CFStringRef text = FromUtf8("aü🎬b");  // 1, 2, 4 and 1 bytes; 1, 1, 2 and 1 units
    const struct {
      CFIndex capacity;
      CFIndex units;
      std::string bytes;
    } cases[] = {{0, 0, ""}, {2, 1, "a"}, {3, 2, "aü"}, {6, 2, "aü"}, {7, 4, "aü🎬"}, {20, 5, "aü🎬b"}};
    for (const auto &expected : cases) {
      std::string buffer(30, '#');
      CFIndex used = -1;
      EXPECT_EQ(CFStringGetBytes(text, CFRangeMake(0, 5), kCFStringEncodingUTF8, 0, false,
                                 reinterpret_cast<UInt8 *>(buffer.data()), expected.capacity, &used),
                expected.units);
      EXPECT_EQ(used, static_cast<CFIndex>(expected.bytes.size())) << expected.capacity;
      EXPECT_EQ(buffer, expected.bytes + std::string(30 - expected.bytes.size(), '#')) << expected.capacity;
    }
  }
}

TEST(CoreFoundation, BytesThatAreNoTextMakeNoString) {
  @autoreleasepool {
    EXPECT_EQ(FromUtf8("\xff\xfe"), nullptr);
    EXPECT_EQ(FromUtf8("cut \xc3"), nullptr);
  }
}
