#include <CoreServices/CoreServices.h>
#import <Foundation/Foundation.h>
#include <sys/stat.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

// The first byte of a reference to the temporary-items folder, the only one that there is.
constexpr UInt8 kTemporaryItems = 1;

std::string TemporaryFolder() {
  const char *folder = getenv("TMPDIR");
  return folder && *folder ? folder : "/tmp";
}

}  // namespace

OSErr FSFindFolder(SInt16, UInt32 folderType, Boolean, FSRef *found) {
  if (folderType != kTemporaryFolderType) return fnfErr;
  const std::string folder = TemporaryFolder();
  struct stat status = {};
  if (stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return fnfErr;
  memset(found->hidden, 0, sizeof found->hidden);
  found->hidden[0] = kTemporaryItems;
  return noErr;
}

CFURLRef CFURLCreateFromFSRef(CFAllocatorRef, const FSRef *reference) {
  if (reference->hidden[0] != kTemporaryItems) return nullptr;
  const std::string path = TemporaryFolder();
  NSString *text = [[NSFileManager defaultManager] stringWithFileSystemRepresentation:path.data() length:path.size()];
  return text ? reinterpret_cast<CFURLRef>([[NSURL alloc] initFileURLWithPath:text isDirectory:YES]) : nullptr;
}
