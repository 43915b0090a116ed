/* The utility functions that the host hands to a plug-in with every call. */
#pragma once

#include "SPBasic.h"

#pragma pack(push, 1)
#ifdef __cplusplus
extern "C" {
#endif

/* A function for older kinds of plug-ins, whose arguments are not declared here. */
typedef void (*PlugUtilOtherFunc)(void);

/* Returns the basic suite, which belongs to the host, or null when the host has none. */
typedef SPBasicSuite* (*PlugGetSPBasicSuiteFunc)(void);

typedef struct PlugUtilFuncs {
  PlugUtilOtherFunc getSettings;
  PlugUtilOtherFunc getSerialNumber;
  PlugUtilOtherFunc getFileTimebase;
  PlugUtilOtherFunc getFileVideo;
  PlugUtilOtherFunc getFileAudioSecond;
  PlugUtilOtherFunc getPlugInResFile;
  PlugUtilOtherFunc getFileVideoBounds;
  PlugGetSPBasicSuiteFunc getSPBasicSuite;
  PlugUtilOtherFunc getFileExtString;
} PlugUtilFuncs;

#ifdef __cplusplus
}
#endif
#pragma pack(pop)

static_assert(sizeof(PlugUtilFuncs) == 9 * sizeof(void*), "nine functions");
static_assert(offsetof(PlugUtilFuncs, getSPBasicSuite) == 7 * sizeof(void*), "the eighth function");
