/* Reporting events to the person in front of the host. */
#pragma once

#include "PrSDKTypes.h"

#define kPrSDKErrorSuite "Premiere Error Suite"
#define kPrSDKErrorSuiteVersion3 3

/* The weight of an event. */
enum { kEventTypeInformational = 1, kEventTypeWarning = 2, kEventTypeError = 3 };

#pragma pack(push, 1)
#ifdef __cplusplus
extern "C" {
#endif

typedef struct PrSDKErrorSuite3 {
  /* Shows an event; the host copies both texts, which are UTF-16 and end with a zero unit. Main thread. */
  prSuiteError (*SetEventStringUnicode)(csSDK_uint32 eventType, prUTF16Char* title, prUTF16Char* description);
} PrSDKErrorSuite3;

#ifdef __cplusplus
}
#endif
#pragma pack(pop)

static_assert(sizeof(PrSDKErrorSuite3) == sizeof(void*), "one function");
