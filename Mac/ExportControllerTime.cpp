#include "ExportControllerTime.h"

#include <locale>
#include <sstream>

namespace {

struct NamedRate {
  PrVideoFrameRates code;
  csSDK_int32 scale;
};

// The rates of the 1001 family that are recognised from a frame's duration.
const NamedRate kDropRates[] = {
    {kVideoFrameRate_NTSC, 30000},
    {kVideoFrameRate_NTSC_HD, 60000},
    {kVideoFrameRate_24Drop, 24000},
};

constexpr csSDK_int32 kAnySampleSize = -1;

struct RateRow {
  csSDK_int32 scale;
  csSDK_int32 sample_size;
  PrVideoFrameRates code;
};

// The ways of writing a rate. The 60 family has no row of thousandths, unlike the others.
const RateRow kRateRows[] = {
    {24000, 1001, kVideoFrameRate_24Drop},     {23976, 1000, kVideoFrameRate_24Drop},
    {2397, 100, kVideoFrameRate_24Drop},       {24, kAnySampleSize, kVideoFrameRate_24},
    {25, kAnySampleSize, kVideoFrameRate_PAL}, {30000, 1001, kVideoFrameRate_NTSC},
    {29970, 1000, kVideoFrameRate_NTSC},       {2997, 100, kVideoFrameRate_NTSC},
    {30, kAnySampleSize, kVideoFrameRate_30},  {50, kAnySampleSize, kVideoFrameRate_PAL_HD},
    {60000, 1001, kVideoFrameRate_NTSC_HD},    {5994, 100, kVideoFrameRate_NTSC_HD},
    {60, kAnySampleSize, kVideoFrameRate_60},
};

}  // namespace

std::string timestr(csSDK_int64 time) {
  std::ostringstream stream;
  stream.imbue(std::locale::classic());  // no digit grouping, whatever the host's locale
  stream << time;
  return stream.str();
}

void ConvertPrTimeToScaleSampleSize(const PrSDKTimeSuite* timeSuite, PrTime frameDuration, csSDK_int32* scale,
                                    csSDK_int32* sampleSize) {
  if (!timeSuite || frameDuration == 0) return;
  PrTime ticks_per_second = 0;
  timeSuite->GetTicksPerSecond(&ticks_per_second);
  if (ticks_per_second % frameDuration == 0) {
    *scale = static_cast<csSDK_int32>(ticks_per_second / frameDuration);
    *sampleSize = 1;
    return;
  }
  for (const NamedRate& rate : kDropRates) {
    PrTime ticks_per_frame = 0;
    timeSuite->GetTicksPerVideoFrame(rate.code, &ticks_per_frame);
    if (ticks_per_frame != frameDuration) continue;
    *scale = rate.scale;
    *sampleSize = 1001;
  }
}

void ConvertScaleSampleSizeToPrTime(const PrSDKTimeSuite* timeSuite, csSDK_int32 scale, csSDK_int32 sampleSize,
                                    PrTime* time) {
  if (!timeSuite) return;
  for (const RateRow& row : kRateRows) {
    if (row.scale != scale || (row.sample_size != kAnySampleSize && row.sample_size != sampleSize)) continue;
    timeSuite->GetTicksPerVideoFrame(row.code, time);
    return;
  }
}
