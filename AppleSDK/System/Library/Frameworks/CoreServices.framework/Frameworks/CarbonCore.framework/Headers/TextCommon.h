// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <MacTypes.h>

// Global names, as in MacTypes.h.
typedef UInt32 TextEncoding;
typedef UInt32 TextEncodingBase;
typedef UInt32 TextEncodingVariant;
typedef UInt32 TextEncodingFormat;
typedef struct TextEncodingRun TextEncodingRun;
typedef struct TECInfo TECInfo;
