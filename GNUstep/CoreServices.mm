#include <CoreServices/CoreServices.h>
#import <Foundation/Foundation.h>
#include <sys/stat.h>

#include <cstdlib>
#include <string>

namespace {

std::string TemporaryFolder() {
  const char *folder = getenv("TMPDIR");
  return folder && *folder ? folder : "/tmp";
}

}  // namespace

OSErr FSFindFolder(SInt16, UInt32 folderType, Boolean, FSRef *found) {
  if (folderType != kTemporaryFolderType) return fnfErr;
  struct stat status = {};
  *found = {};
  return stat(TemporaryFolder().c_str(), &status) == 0 && S_ISDIR(status.st_mode) ? noErr : fnfErr;
}

CFURLRef CFURLCreateFromFSRef(CFAllocatorRef, const FSRef *) {
  const std::string path = TemporaryFolder();
  NSString *text = [[NSFileManager defaultManager] stringWithFileSystemRepresentation:path.data() length:path.size()];
  return text ? reinterpret_cast<CFURLRef>([[NSURL alloc] initFileURLWithPath:text isDirectory:YES]) : nullptr;
}
