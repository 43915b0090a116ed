/* The function tables that the host hands to a plug-in with every call. */
#pragma once

#include "PrSDKPlugUtilities.h"

/* The interface version of the piSuites below. */
#define PR_PISUITES_VERSION 9

struct MemoryFuncs;
struct WindowFuncs;
struct PPixFuncs;
struct TimelineFuncs;

#pragma pack(push, 1)
#ifdef __cplusplus
extern "C" {
#endif

typedef struct {
  csSDK_int32 piInterfaceVer; /* PR_PISUITES_VERSION */
  /* All tables belong to the host. Those that are only named here may be null. */
  struct MemoryFuncs* memFuncs;
  struct WindowFuncs* windFuncs;
  struct PPixFuncs* ppixFuncs;
  PlugUtilFuncs* utilFuncs;
  struct TimelineFuncs* timelineFuncs;
} piSuites, *piSuitesPtr;

#ifdef __cplusplus
}
#endif
#pragma pack(pop)

static_assert(sizeof(piSuites) == 4 + 5 * sizeof(void*), "a version and five pointers, packed");
static_assert(offsetof(piSuites, utilFuncs) == 4 + 3 * sizeof(void*), "the fourth pointer");
