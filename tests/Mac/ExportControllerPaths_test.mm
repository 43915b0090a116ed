#include "ExportControllerPaths.h"

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "ExportState.h"
#include "TemporaryFolder.h"
#include "WorkflowState.h"

namespace {

constexpr size_t kUnits = 256;
constexpr prUTF16Char kGuard = 0xabcd;

std::u16string Read(const prUTF16Char *units) {
  return std::u16string(reinterpret_cast<const char16_t *>(units));
}

// A path buffer of the host's size with guard units behind it.
struct PathBuffer {
  std::vector<prUTF16Char> units = std::vector<prUTF16Char>(kUnits + 64, kGuard);

  explicit PathBuffer(const std::u16string &text) {
    memcpy(units.data(), text.c_str(), (text.size() + 1) * sizeof(prUTF16Char));
  }
  bool Overrun() const {
    for (size_t i = kUnits; i < units.size(); ++i) {
      if (units[i] != kGuard) return true;
    }
    return false;
  }
};

// A temporary-items folder whose path has exactly that many units, of one byte each.
class TemporaryItems {
 public:
  explicit TemporaryItems(size_t length) : path_(folder_.Path()) {
    while (path_.size() < length) {
      const size_t missing = length - path_.size();
      // Names of at most 100 bytes; one byte cannot be made of a separator alone.
      size_t name = std::min<size_t>(missing - 1, 100);
      if (missing - 1 - name == 1) --name;
      path_ += "/" + std::string(name, 'd');
    }
    std::filesystem::create_directories(path_);
    setenv("TMPDIR", path_.c_str(), 1);
  }
  ~TemporaryItems() { setenv("TMPDIR", before_.c_str(), 1); }

  const std::string &Path() const { return path_; }

 private:
  const std::filesystem::path before_ = std::filesystem::temp_directory_path();
  const TemporaryFolder folder_;
  std::string path_;
};

}  // namespace

// A full path of 254 units fits, one of 255 does not; no length writes behind the host's 256 units.
TEST(ExportControllerPaths, RefusesAFullPathOf255Units) {
  for (size_t folder_length : {199u, 200u, 201u, 254u, 255u, 256u, 300u}) {
    TemporaryItems folder(folder_length);
    const std::string name = "/" + std::string(53, 'n');
    PathBuffer buffer(std::u16string(name.begin(), name.end()));
    const csSDK_int32 status = setDestinationPath(buffer.units.data(), name);
    EXPECT_EQ(status, folder_length + 54 < 255 ? 0 : -1) << folder_length;
    EXPECT_FALSE(buffer.Overrun()) << folder_length;
    EXPECT_EQ(g_export.film, folder.Path() + name) << "where the host may write";
    const std::string expected = status == 0 ? folder.Path() + name : folder.Path().substr(0, 255);
    EXPECT_EQ(Read(buffer.units.data()), std::u16string(expected.begin(), expected.end()));
    // The path for the upload takes 127 bytes of the folder.
    EXPECT_EQ(g_fpath, folder.Path().substr(0, 127) + name);
  }
}

// Whatever the folder is called, the film is written into it or not at all: never to the root of the disk.
TEST(ExportControllerPaths, WritesIntoTheFolderOrNowhere) {
  TemporaryItems folder(40);
  for (const char *odd : {"per%cent", "a?b#c;d", "Größe 🎬", "not \xff UTF-8", "back\\slash"}) {
    const std::string path = folder.Path() + "/" + odd;
    std::filesystem::create_directory(path);
    setenv("TMPDIR", path.c_str(), 1);
    PathBuffer buffer(u"/name.mp4");
    const csSDK_int32 status = setDestinationPath(buffer.units.data(), "/name.mp4");
    if (status == 0) {
      EXPECT_EQ(g_fpath, path + "/name.mp4");
      NSString *written = [NSString stringWithCharacters:buffer.units.data() length:Read(buffer.units.data()).size()];
      EXPECT_EQ(std::string([written UTF8String]), g_fpath);
    } else {
      EXPECT_EQ(odd, std::string("not \xff UTF-8"));
    }
  }
}

TEST(ExportControllerPaths, FindsFilesByTheirUtf16Path) {
  TemporaryItems folder(60);
  const std::string file = folder.Path() + "/Größe 🎬.epr";
  fclose(fopen(file.c_str(), "w"));
  const std::u16string path = std::u16string(folder.Path().begin(), folder.Path().end()) + u"/Größe 🎬.epr";
  EXPECT_TRUE(fileExists(reinterpret_cast<const prUTF16Char *>(path.c_str())));
  EXPECT_FALSE(fileExists(reinterpret_cast<const prUTF16Char *>((path + u"x").c_str())));
  EXPECT_FALSE(fileExists(reinterpret_cast<const prUTF16Char *>(u"")));
}

TEST(ExportControllerPaths, ConvertsAndCopiesUnits) {
  prUTF16Char units[16];
  std::fill(std::begin(units), std::end(units), kGuard);
  copyConvertStringLiteralIntoUTF16(L"Grün", units);
  EXPECT_EQ(Read(units), u"Grün");
  EXPECT_EQ(units[5], kGuard);
  // Never more units than the source has characters: a character outside the basic plane pushes the last one out.
  copyConvertStringLiteralIntoUTF16(L"\U0001F3ACab", units);
  EXPECT_EQ(Read(units), u"\U0001F3ACa");
  EXPECT_EQ(prUTF16CharLength(units), 3);
  EXPECT_EQ(prUTF16CharLength(nullptr), 0);

  prUTF16Char copy[8];
  std::fill(std::begin(copy), std::end(copy), kGuard);
  prUTF16CharCopy(copy, units);
  EXPECT_EQ(Read(copy), Read(units));
  EXPECT_EQ(copy[4], kGuard);
  prUTF16CharCopy(copy, nullptr);
  prUTF16CharCopy(nullptr, units);
  EXPECT_EQ(Read(copy), Read(units));

  char narrow[8] = "";
  safeStrCpy(narrow, 1, "whole");
  EXPECT_STREQ(narrow, "whole");
  wchar_t wide[8] = L"a";
  safeWcscat(wide, 1, L"bcd");
  EXPECT_STREQ(wide, L"abcd");
}
