/* How the host counts time. */
#pragma once

#include "PrSDKTypes.h"

#define kPrSDKTimeSuite "Premiere Time Suite"
#define kPrSDKTimeSuiteVersion 1

/* The standard frame rates. */
typedef enum PrVideoFrameRates {
  kVideoFrameRate_24Drop = 1,  /* 24000 / 1001 */
  kVideoFrameRate_24 = 2,      /* 24 */
  kVideoFrameRate_PAL = 3,     /* 25 */
  kVideoFrameRate_NTSC = 4,    /* 30000 / 1001 */
  kVideoFrameRate_30 = 5,      /* 30 */
  kVideoFrameRate_PAL_HD = 6,  /* 50 */
  kVideoFrameRate_NTSC_HD = 7, /* 60000 / 1001 */
  kVideoFrameRate_60 = 8       /* 60 */
} PrVideoFrameRates;

#pragma pack(push, 1)
#ifdef __cplusplus
extern "C" {
#endif

typedef struct PrSDKTimeSuite {
  /* 254016000000, of which a frame of every standard rate is a whole number. */
  prSuiteError (*GetTicksPerSecond)(PrTime* ticksPerSecond);
  /* Fails for a rate that is none of the codes above, and leaves the output alone. */
  prSuiteError (*GetTicksPerVideoFrame)(PrVideoFrameRates videoFrameRate, PrTime* ticksPerFrame);
  /* The rate is in samples a second; fails for one that does not divide a second's ticks. */
  prSuiteError (*GetTicksPerAudioSample)(float samplesPerSecond, PrTime* ticksPerSample);
} PrSDKTimeSuite;

#ifdef __cplusplus
}
#endif
#pragma pack(pop)

static_assert(sizeof(PrVideoFrameRates) == 4, "the codes travel as 32-bit numbers");
static_assert(sizeof(PrSDKTimeSuite) == 3 * sizeof(void*), "three functions");
