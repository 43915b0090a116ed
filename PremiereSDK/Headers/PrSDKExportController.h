/* The entry point of an export controller, a plug-in with an item of its own in the host's File > Export menu.

   Three things here are assumptions, because they are not published: the members of ecStdParms, the names of the two
   functions of PrSDKExportControllerSuite (their order and arguments are known), and the width of what the first of
   them puts out. They stand in this header and nowhere else. */
#pragma once

#include "PrSDKPlugSuites.h"
#include "PrSDKTypes.h"

/* What the host wants of the entry point. All calls come on the main thread: start-up once, exports, shut-down once. */
enum {
  ecSelStartup = 0,        /* param is an ExportControllerInitRec* */
  ecSelExportTimeline = 1, /* param is an ExportControllerTimelineInfoRec* */
  ecSelShutdown = 7        /* param is not used */
};

/* The name of the function that the host looks up in the plug-in. */
#define EXPORT_CONTROLLER_ENTRY_NAME "xExportControllerEntry"

/* Units of the host's text buffers, the terminating zero included. */
#define EXPORT_CONTROLLER_TEXT_UNITS 256

#pragma pack(push, 1)
#ifdef __cplusplus
extern "C" {
#endif

/* Comes with every call and belongs to the host. */
typedef struct {
  csSDK_int32 ecInterfaceVer;
  piSuitesPtr piSuites;
} ecStdParms;

/* Filled by the plug-in at start-up. The host hands it over filled with zeros. */
typedef struct {
  prUTF16Char displayName[EXPORT_CONTROLLER_TEXT_UNITS]; /* the text of the menu item */
} ExportControllerInitRec;

/* The sequence to export. Both members go into every call of the export-controller suite. */
typedef struct {
  csSDK_int64 timelineData; /* the host's handle */
  PrTimelineID timelineID;
} ExportControllerTimelineInfoRec;

/* An order to export. Both texts belong to the plug-in and need only live until the call returns. */
typedef struct {
  prUTF16Char* destinationPath; /* full path of the file to write */
  prUTF16Char* presetPath;      /* full path of the preset file to encode with */
} ExportControllerExportRec;

typedef struct PrSDKExportControllerSuite {
  /* Puts a piece of information about the sequence into *info. */
  prSuiteError (*QueryTimeline)(csSDK_int64 timelineData, PrTimelineID timelineID, csSDK_int64* info);
  /* Renders the sequence into a file and returns when it is written, when that failed, or when the user cancelled. */
  prSuiteError (*ExportTimeline)(csSDK_int64 timelineData, PrTimelineID timelineID,
                                 ExportControllerExportRec* exportRec);
} PrSDKExportControllerSuite;

/* The entry point: PREMPLUGENTRY xExportControllerEntry(selector, stdParms, param). Answers a status, 0 for success. */
typedef csSDK_int32 (*ExportControllerEntryFunc)(csSDK_int32 selector, ecStdParms* stdParms, void* param);

#ifdef __cplusplus
}
#endif
#pragma pack(pop)

static_assert(sizeof(ecStdParms) == 4 + sizeof(void*) && offsetof(ecStdParms, piSuites) == 4, "packed");
static_assert(sizeof(ExportControllerInitRec) == 512, "256 units of 16 bits");
static_assert(sizeof(ExportControllerTimelineInfoRec) == 12, "a 64-bit handle and a 32-bit identifier, packed");
static_assert(offsetof(ExportControllerTimelineInfoRec, timelineID) == 8, "the identifier follows the handle");
static_assert(sizeof(ExportControllerExportRec) == 2 * sizeof(void*), "two pointers");
static_assert(offsetof(ExportControllerExportRec, presetPath) == sizeof(void*), "destination, then preset");
static_assert(sizeof(PrSDKExportControllerSuite) == 2 * sizeof(void*), "two functions");
static_assert(offsetof(PrSDKExportControllerSuite, ExportTimeline) == sizeof(void*), "query, then export");
