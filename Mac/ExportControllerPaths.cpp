#include "ExportControllerPaths.h"

#include <CoreServices/CoreServices.h>

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <memory>
#include <type_traits>
#include <vector>

#include "ExportState.h"
#include "WorkflowState.h"

namespace {

// A full path stays below this many units.
constexpr CFIndex kPathLimit = 255;

// Bytes of the folder's UTF-8 text in g_fpath. A longer path is cut.
constexpr size_t kFolderTextBytes = 127;

// UTF-8 takes three bytes at most for each unit.
constexpr size_t kPathBytes = 3 * kPathLimit;

struct Releaser {
  void operator()(CFTypeRef object) const { CFRelease(object); }
};

template <typename Ref>
using Owned = std::unique_ptr<std::remove_pointer_t<Ref>, Releaser>;

// The folder's POSIX path; null when there is no such folder, with the reason in status.
Owned<CFStringRef> TemporaryFolder(csSDK_int32* status) {
  FSRef folder = {};
  *status = FSFindFolder(static_cast<SInt16>(kOnSystemDisk), kTemporaryFolderType, kDontCreateFolder, &folder);
  if (*status != 0) return nullptr;
  Owned<CFURLRef> url(CFURLCreateFromFSRef(kCFAllocatorDefault, &folder));
  if (!url) {
    *status = fnfErr;
    return nullptr;
  }
  Owned<CFStringRef> path(CFURLCopyFileSystemPath(url.get(), kCFURLPOSIXPathStyle));
  // Without one, the film would be written to the root of the disk.
  if (!path || CFStringGetLength(path.get()) == 0) {
    *status = fnfErr;
    return nullptr;
  }
  return path;
}

// As many whole characters of it in UTF-8 as fit into that many bytes.
std::string Text(CFStringRef string, size_t bytes) {
  std::string text(bytes, '\0');
  CFIndex used = 0;
  CFStringGetBytes(string, CFRangeMake(0, CFStringGetLength(string)), kCFStringEncodingUTF8, 0, 0,
                   reinterpret_cast<UInt8*>(&text[0]), static_cast<CFIndex>(bytes), &used);
  text.resize(static_cast<size_t>(used));
  return text;
}

}  // namespace

csSDK_int32 setDestinationPath(prUTF16Char* destination, const std::string& name) {
  const std::vector<prUTF16Char> kept(destination, destination + prUTF16CharLength(destination) + 1);
  csSDK_int32 status = 0;
  const Owned<CFStringRef> path = TemporaryFolder(&status);
  g_fpath = (path ? Text(path.get(), kFolderTextBytes) : std::string()) + name;
  if (!path) return status;
  g_export.film = Text(path.get(), kPathBytes) + name;

  const CFIndex length = CFStringGetLength(path.get());
  const CFIndex written = std::min(length, kPathLimit);
  CFStringGetCharacters(path.get(), CFRangeMake(0, written), reinterpret_cast<UniChar*>(destination));
  destination[written] = 0;
  const CFIndex name_length = static_cast<CFIndex>(kept.size()) - 1;
  if (length + name_length >= kPathLimit) return -1;
  prUTF16CharCopy(destination + length, kept.data());
  return status;
}

bool fileExists(const prUTF16Char* path) {
  const Owned<CFStringRef> text(CFStringCreateWithCharacters(
      kCFAllocatorDefault, reinterpret_cast<const UniChar*>(path), prUTF16CharLength(path)));
  if (!text) return false;
  const Owned<CFURLRef> url(
      CFURLCreateWithFileSystemPath(kCFAllocatorDefault, text.get(), kCFURLPOSIXPathStyle, false));
  return url && CFURLResourceIsReachable(url.get(), nullptr);
}

csSDK_int32 prUTF16CharLength(const prUTF16Char* string) {
  csSDK_int32 length = 0;
  if (string) {
    while (string[length] != 0) ++length;
  }
  return length;
}

void prUTF16CharCopy(prUTF16Char* destination, const prUTF16Char* source) {
  if (!destination || !source) return;
  const size_t units = static_cast<size_t>(prUTF16CharLength(source)) + 1;
  memmove(destination, source, units * sizeof(prUTF16Char));
}

void copyConvertStringLiteralIntoUTF16(const wchar_t* source, prUTF16Char* destination) {
  static_assert(sizeof(wchar_t) == 4, "wide text is UTF-32");
  const CFIndex characters = static_cast<CFIndex>(wcslen(source));
  const Owned<CFStringRef> text(CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(source),
                                                        characters * 4, kCFStringEncodingUTF32LE, false));
  memset(destination, 0, static_cast<size_t>(characters + 1) * sizeof(prUTF16Char));
  if (!text) return;
  const CFIndex units = std::min(CFStringGetLength(text.get()), characters);
  CFStringGetCharacters(text.get(), CFRangeMake(0, units), reinterpret_cast<UniChar*>(destination));
}

void safeStrCpy(char* destination, size_t, const char* source) {
  strcpy(destination, source);
}

void safeWcscat(wchar_t* destination, size_t, const wchar_t* source) {
  wcscat(destination, source);
}
