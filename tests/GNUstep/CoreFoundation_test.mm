#include <CoreFoundation/CoreFoundation.h>
#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "TemporaryFolder.h"

namespace {

struct Releaser {
  void operator()(const void *object) const { CFRelease(object); }
};
using String = std::unique_ptr<const __CFString, Releaser>;
using Url = std::unique_ptr<const __CFURL, Releaser>;

String FromUtf8(const std::string &text) {
  return String(CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8 *>(text.data()),
                                        static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8, false));
}

Url FileUrl(const std::string &path) {
  return Url(CFURLCreateWithFileSystemPath(kCFAllocatorDefault, FromUtf8(path).get(), kCFURLPOSIXPathStyle, false));
}

}  // namespace

TEST(CoreFoundation, ConversionStopsAtTheLastWholeCharacter) {
  @autoreleasepool {
    String text = FromUtf8("aü🎬b");  // 1, 2, 4 and 1 bytes; 1, 1, 2 and 1 units
    const struct {
      CFIndex capacity;
      CFIndex units;
      std::string bytes;
    } cases[] = {{0, 0, ""}, {2, 1, "a"}, {3, 2, "aü"}, {6, 2, "aü"}, {7, 4, "aü🎬"}, {20, 5, "aü🎬b"}};
    for (const auto &expected : cases) {
      std::string buffer(30, '#');
      CFIndex used = -1;
      EXPECT_EQ(CFStringGetBytes(text.get(), CFRangeMake(0, 5), kCFStringEncodingUTF8, 0, false,
                                 reinterpret_cast<UInt8 *>(buffer.data()), expected.capacity, &used),
                expected.units);
      EXPECT_EQ(used, static_cast<CFIndex>(expected.bytes.size())) << expected.capacity;
      EXPECT_EQ(buffer, expected.bytes + std::string(30 - expected.bytes.size(), '#')) << expected.capacity;
    }
    UInt8 part[8] = {};
    EXPECT_EQ(CFStringGetBytes(text.get(), CFRangeMake(1, 1), kCFStringEncodingUTF8, 0, false, part, 8, nullptr), 1);
    EXPECT_STREQ(reinterpret_cast<const char *>(part), "ü");
  }
}

TEST(CoreFoundation, BytesThatAreNoTextMakeNoString) {
  @autoreleasepool {
    EXPECT_EQ(FromUtf8("\xff\xfe"), nullptr);
    EXPECT_EQ(FromUtf8("cut \xc3"), nullptr);
    const wchar_t clapper[] = {0x1f3ac, 'x'};
    String wide(CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8 *>(clapper), sizeof clapper,
                                        kCFStringEncodingUTF32LE, false));
    ASSERT_NE(wide, nullptr);
    EXPECT_EQ(CFStringGetLength(wide.get()), 3);
  }
}

TEST(CoreFoundation, ReachableIsWhatExists) {
  @autoreleasepool {
    const TemporaryFolder outer;
    const std::filesystem::path folder = outer / "Größe 🎬 %20";
    std::filesystem::create_directory(folder);
    WriteFile(folder / "preset.epr", "x");
    std::filesystem::create_symlink(folder / "gone", folder / "dangling");
    EXPECT_TRUE(CFURLResourceIsReachable(FileUrl(folder / "preset.epr").get(), nullptr));
    EXPECT_TRUE(CFURLResourceIsReachable(FileUrl(folder).get(), nullptr));
    CFErrorRef error = reinterpret_cast<CFErrorRef>(&error);
    EXPECT_FALSE(CFURLResourceIsReachable(FileUrl(folder / "missing.epr").get(), &error));
    EXPECT_EQ(error, nullptr) << "there is no error object to release";
    EXPECT_FALSE(CFURLResourceIsReachable(FileUrl(folder / "dangling").get(), nullptr));
    EXPECT_EQ(FileUrl(""), nullptr);
    String path(CFURLCopyFileSystemPath(FileUrl(folder / "preset.epr").get(), kCFURLPOSIXPathStyle));
    EXPECT_TRUE(CFURLResourceIsReachable(
        Url(CFURLCreateWithFileSystemPath(kCFAllocatorDefault, path.get(), kCFURLPOSIXPathStyle, false)).get(),
        nullptr));
  }
}
