// Times: as text, and between the host's time values and frame rates given as scale over sample size (frames a second).
#pragma once

#include <string>

#include "PrSDKTimeSuite.h"
#include "PrSDKTypes.h"

/// The decimal text of a time in seconds since the epoch.
std::string timestr(csSDK_int64 time);

/// The rate of frames that last frameDuration ticks. Outputs stay as they are for a duration that is neither a whole
/// part of a second nor one of the 1001 family, and without a time suite.
void ConvertPrTimeToScaleSampleSize(const PrSDKTimeSuite* timeSuite, PrTime frameDuration, csSDK_int32* scale,
                                    csSDK_int32* sampleSize);

/// The duration in ticks of one frame at the rate. *time stays as it is for a rate that the host does not name, and
/// without a time suite.
void ConvertScaleSampleSizeToPrTime(const PrSDKTimeSuite* timeSuite, csSDK_int32 scale, csSDK_int32 sampleSize,
                                    PrTime* time);
