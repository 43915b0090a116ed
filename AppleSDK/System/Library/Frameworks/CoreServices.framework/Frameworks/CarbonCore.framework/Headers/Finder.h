// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

// Global names, as in MacTypes.h.
typedef struct FInfo FInfo;
typedef struct FXInfo FXInfo;
typedef struct DInfo DInfo;
typedef struct DXInfo DXInfo;
typedef struct FileInfo FileInfo;
typedef struct FolderInfo FolderInfo;
typedef struct ExtendedFileInfo ExtendedFileInfo;
typedef struct ExtendedFolderInfo ExtendedFolderInfo;
typedef struct RoutingResourceEntry RoutingResourceEntry;
