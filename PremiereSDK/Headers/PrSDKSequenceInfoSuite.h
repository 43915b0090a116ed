/* What the host knows of a sequence. All functions are called on the main thread. */
#pragma once

#include "PrSDKTypes.h"

#define kPrSDKSequenceInfoSuite "MediaCore Sequence Info Suite"
#define kPrSDKSequenceInfoSuiteVersion 3

#pragma pack(push, 1)
#ifdef __cplusplus
extern "C" {
#endif

/* The order of a frame's fields. The plug-in does not ask for it; the numbers are those of the preset files. */
typedef csSDK_int32 prFieldType;

typedef struct PrSDKSequenceInfoSuite {
  /* The frame in pixels: top and left are 0, so right is the width and bottom the height. */
  prSuiteError (*GetFrameRect)(PrTimelineID timelineID, prRect* frameRect);
  /* The width of a pixel over its height. */
  prSuiteError (*GetPixelAspectRatio)(PrTimelineID timelineID, csSDK_uint32* numerator, csSDK_uint32* denominator);
  /* The duration of one frame in ticks. */
  prSuiteError (*GetFrameRate)(PrTimelineID timelineID, PrTime* ticksPerFrame);
  prSuiteError (*GetFieldType)(PrTimelineID timelineID, prFieldType* fieldType);
  /* The time that the first frame's time code shows, in ticks. */
  prSuiteError (*GetZeroPoint)(PrTimelineID timelineID, PrTime* zeroPoint);
  /* Whether the time code drops frame numbers to keep up with the clock. */
  prSuiteError (*GetTimecodeDropFrame)(PrTimelineID timelineID, prBool* dropFrame);
  /* Whether the sequence is played from proxies of its media. */
  prSuiteError (*GetProxyFlag)(PrTimelineID timelineID, prBool* usesProxies);
} PrSDKSequenceInfoSuite;

#ifdef __cplusplus
}
#endif
#pragma pack(pop)

static_assert(sizeof(PrSDKSequenceInfoSuite) == 7 * sizeof(void*), "seven functions");
static_assert(offsetof(PrSDKSequenceInfoSuite, GetFrameRate) == 2 * sizeof(void*), "the third function");
