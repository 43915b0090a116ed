// The calls of CoreServices that the plug-in uses: where the temporary-items folder is.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#ifdef __cplusplus
extern "C" {
#endif

/// A reference to a file or folder. What it holds is private; here it is always to the temporary-items folder.
typedef struct {
  UInt8 hidden[80];
} FSRef;

enum { kOnSystemDisk = -32768 };
enum { kTemporaryFolderType = 0x74656d70 /* 'temp' */ };
enum { kDontCreateFolder = 0, kCreateFolder = 1 };
enum { noErr = 0, fnfErr = -43 };

/// Finds a special folder of the user; here the temporary-items folder alone ($TMPDIR, or else /tmp). Returns noErr, or
/// fnfErr when there is no such folder.
OSErr FSFindFolder(SInt16 volume, UInt32 folderType, Boolean create, FSRef* found);

CFURLRef CFURLCreateFromFSRef(CFAllocatorRef allocator, const FSRef* reference);

#ifdef __cplusplus
}
#endif
