// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <CoreFoundation/CFBase.h>

typedef struct CF_BRIDGED_TYPE(NSError) __CFError *CFErrorRef;
