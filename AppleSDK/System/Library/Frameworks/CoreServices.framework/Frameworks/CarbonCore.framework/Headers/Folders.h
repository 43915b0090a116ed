// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <CarbonCore/Files.h>

enum { kOnSystemDisk = -32768L };
enum { kDontCreateFolder = false, kCreateFolder = true };
enum { kTemporaryFolderType = 'temp' };

extern "C" {
OSErr FSFindFolder(FSVolumeRefNum volume, OSType folderType, Boolean createFolder, FSRef *_Nonnull found) API_DEPRECATED("", macos(10.0, 10.8));
}
