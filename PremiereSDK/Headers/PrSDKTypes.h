/* The scalar types of the host's interface. All sizes are fixed, on every system. */
#pragma once

#include <assert.h>
#include <stddef.h>
#include <stdint.h>

typedef int8_t csSDK_int8;
typedef uint8_t csSDK_uint8;
typedef int16_t csSDK_int16;
typedef uint16_t csSDK_uint16;
typedef int32_t csSDK_int32;
typedef uint32_t csSDK_uint32;
typedef int64_t csSDK_int64;
typedef uint64_t csSDK_uint64;

/* One unit of UTF-16 text in the machine's byte order. Texts end with a zero unit. */
typedef csSDK_uint16 prUTF16Char;

/* Time or duration in ticks; the time suite says how many there are in a second. */
typedef csSDK_int64 PrTime;

/* Names one sequence of the open project. */
typedef csSDK_int32 PrTimelineID;

/* What the functions of a suite answer: 0 for success. */
typedef csSDK_int32 prSuiteError;

/* 0 or 1. Only functions that the plug-in does not call take one; its width is an assumption. */
typedef csSDK_uint8 prBool;

/* A rectangle in pixels; right and bottom are one past the last pixel. The order of the sides is macOS's. */
#pragma pack(push, 1)
typedef struct {
  csSDK_int16 top;
  csSDK_int16 left;
  csSDK_int16 bottom;
  csSDK_int16 right;
} prRect;
#pragma pack(pop)

static_assert(sizeof(prRect) == 8, "four 16-bit sides");
static_assert(offsetof(prRect, bottom) == 4 && offsetof(prRect, right) == 6, "top, left, bottom, right");

/* Linkage and result of the function that the host looks up in a plug-in: PREMPLUGENTRY xExportControllerEntry(…). */
#ifdef __cplusplus
#define PREMPLUGENTRY extern "C" __attribute__((visibility("default"))) csSDK_int32
#else
#define PREMPLUGENTRY __attribute__((visibility("default"))) csSDK_int32
#endif
