/* The suite from which all other suites come. */
#pragma once

#include "PrSDKTypes.h"

#pragma pack(push, 1)
#ifdef __cplusplus
extern "C" {
#endif

/* A status: 0 for success. */
typedef csSDK_int32 SPErr;

typedef struct SPBasicSuite {
  /* Puts the function table of the suite into *suite. The table belongs to the host and is valid until it is released,
     which must happen as often as it was acquired, with the same name and version. Fails for an unknown suite. */
  SPErr (*AcquireSuite)(const char* name, csSDK_int32 version, const void** suite);
  SPErr (*ReleaseSuite)(const char* name, csSDK_int32 version);
  /* Compares two names; the answer is not 0 when they are equal. */
  csSDK_int32 (*IsEqual)(const char* token1, const char* token2);
  /* Memory of the host: size in bytes. A block is freed with FreeBlock only. */
  SPErr (*AllocateBlock)(size_t size, void** block);
  SPErr (*FreeBlock)(void* block);
  SPErr (*ReallocateBlock)(void* block, size_t newSize, void** newBlock);
  /* Stands where a suite has nothing to offer; always fails. */
  SPErr (*Undefined)(void);
} SPBasicSuite;

#ifdef __cplusplus
}
#endif
#pragma pack(pop)

static_assert(sizeof(SPBasicSuite) == 7 * sizeof(void*), "seven functions");
static_assert(offsetof(SPBasicSuite, ReleaseSuite) == sizeof(void*), "acquire, then release");
