// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <MacTypes.h>

// Global names, as in MacTypes.h.
typedef struct TMTask TMTask;

extern "C" {
AbsoluteTime UpTime(void) API_DEPRECATED("", macos(10.0, 10.8));
void Microseconds(UnsignedWide *_Nonnull count) API_DEPRECATED("", macos(10.0, 10.8));
}
