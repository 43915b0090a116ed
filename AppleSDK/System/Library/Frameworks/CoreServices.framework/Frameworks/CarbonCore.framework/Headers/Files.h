// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <MacTypes.h>

struct FSRef {
  UInt8 hidden[80];
};
typedef struct FSRef FSRef;
typedef FSRef *FSRefPtr;
typedef SInt16 FSVolumeRefNum;

// Global names, as in MacTypes.h.
typedef struct FSSpec FSSpec;
typedef struct FSCatalogInfo FSCatalogInfo;
typedef struct FSVolumeInfo FSVolumeInfo;
typedef struct FSRefParam FSRefParam;
typedef struct HFSUniStr255 HFSUniStr255;
typedef struct CatPositionRec CatPositionRec;
typedef struct OpaqueFSIterator *FSIterator;
typedef UInt32 FSCatalogInfoBitmap;
typedef UInt32 FSVolumeInfoBitmap;
