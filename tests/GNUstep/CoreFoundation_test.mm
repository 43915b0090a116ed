#import <Foundation/Foundation.h>

#include <CoreFoundation/CoreFoundation.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

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

struct Conversion {
  CFIndex units;
  std::string bytes;
};

// Converts the whole text to UTF-8 with room for that many bytes, and checks that nothing is written behind them.
Conversion Convert(const std::string &utf8, CFIndex capacity) {
  constexpr UInt8 kGuard = 0xcd;
  String string = FromUtf8(utf8);
  std::vector<UInt8> buffer(static_cast<size_t>(capacity) + 8, kGuard);
  CFIndex used = -1;
  const CFIndex units = CFStringGetBytes(string.get(), CFRangeMake(0, CFStringGetLength(string.get())),
                                         kCFStringEncodingUTF8, 0, false, buffer.data(), capacity, &used);
  for (size_t i = static_cast<size_t>(used); i < buffer.size(); ++i) EXPECT_EQ(buffer[i], kGuard) << i;
  return {units, std::string(buffer.begin(), buffer.begin() + used)};
}

}  // namespace

TEST(CoreFoundation, ConversionStopsAtTheLastWholeCharacter) {
  @autoreleasepool {
    const std::string text = "aü🎬b";  // 1, 2, 4 and 1 bytes; 1, 1, 2 and 1 units
    const struct {
      CFIndex capacity;
      CFIndex units;
      std::string bytes;
    } cases[] = {{0, 0, ""},   {1, 1, "a"},   {2, 1, "a"},    {3, 2, "aü"},
                 {6, 2, "aü"}, {7, 4, "aü🎬"}, {8, 5, "aü🎬b"}, {100, 5, "aü🎬b"}};
    for (const auto &expected : cases) {
      const Conversion converted = Convert(text, expected.capacity);
      EXPECT_EQ(converted.units, expected.units) << expected.capacity;
      EXPECT_EQ(converted.bytes, expected.bytes) << expected.capacity;
    }
  }
}

TEST(CoreFoundation, ConversionTakesOnlyItsRange) {
  @autoreleasepool {
    String string = FromUtf8("Grüße");
    UInt8 buffer[16] = {};
    EXPECT_EQ(CFStringGetBytes(string.get(), CFRangeMake(2, 2), kCFStringEncodingUTF8, 0, false, buffer, 16, nullptr),
              2);
    EXPECT_STREQ(reinterpret_cast<const char *>(buffer), "üß");
    UniChar units[4] = {};
    CFStringGetCharacters(string.get(), CFRangeMake(3, 2), units);
    EXPECT_EQ(units[0], 0xdf);
    EXPECT_EQ(units[1], 'e');
    EXPECT_EQ(units[2], 0);
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
    const std::string text = [reinterpret_cast<NSString *>(const_cast<__CFString *>(path.get())) UTF8String];
    EXPECT_EQ(text, (folder / "preset.epr").string());
  }
}

// What Create gives is the caller's, who may hold it beyond any pool and gives it back with one release.
TEST(CoreFoundation, CreatedObjectsBelongToTheCaller) {
  String string;
  Url url;
  @autoreleasepool {
    string = FromUtf8("/tmp/a file with a name that is long enough to be an object");
    url = Url(CFURLCreateWithFileSystemPath(kCFAllocatorDefault, string.get(), kCFURLPOSIXPathStyle, false));
  }
  @autoreleasepool {
    EXPECT_EQ([(id)string.get() retainCount], 1u);
    EXPECT_EQ([(id)url.get() retainCount], 1u);
    EXPECT_EQ(CFStringGetLength(string.get()), 59);
  }
}
