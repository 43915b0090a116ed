#import <Foundation/Foundation.h>

#include <CoreServices/CoreServices.h>

#include <sys/stat.h>

#include <cstdlib>
#include <cstring>
#include <deque>
#include <mutex>
#include <string>

namespace {

// A reference has no room for a path: it holds the address of one that is kept here for the life of the process.
const std::string *KeepPath(const std::string &path) {
  static std::mutex mutex;
  static std::deque<std::string> paths;
  std::lock_guard<std::mutex> lock(mutex);
  for (const std::string &kept : paths) {
    if (kept == path) return &kept;
  }
  paths.push_back(path);
  return &paths.back();
}

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
  const std::string *kept = KeepPath(folder);
  memset(found->hidden, 0, sizeof found->hidden);
  memcpy(found->hidden, &kept, sizeof kept);
  return noErr;
}

CFURLRef CFURLCreateFromFSRef(CFAllocatorRef, const FSRef *reference) {
  const std::string *path = nullptr;
  memcpy(&path, reference->hidden, sizeof path);
  NSString *text = path ? [[NSFileManager defaultManager] stringWithFileSystemRepresentation:path->c_str()
                                                                                      length:path->size()]
                        : nil;
  if (!text) return nullptr;
  return reinterpret_cast<CFURLRef>([[NSURL alloc] initFileURLWithPath:text isDirectory:YES]);
}
