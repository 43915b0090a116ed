// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <MacTypes.h>

// Global names, as in MacTypes.h.
typedef struct QElem QElem;
typedef struct QHdr QHdr;
typedef struct SysParmType SysParmType;
typedef struct MachineLocation MachineLocation;
typedef struct DateTimeRec DateTimeRec;
typedef struct LongDateRec LongDateRec;

extern "C" {
void Delay(unsigned long ticks, unsigned long *_Nullable finalTicks) API_DEPRECATED("", macos(10.0, 10.8));
}
