#include "ExportControllerTime.h"

#include <gtest/gtest.h>

#include <locale>
#include <utility>

namespace {

constexpr PrTime kTicksPerSecond = 254016000000;

// The host's rates by code, from 1.
const PrTime kTicksPerFrame[] = {0,
                                 kTicksPerSecond / 24000 * 1001,
                                 kTicksPerSecond / 24,
                                 kTicksPerSecond / 25,
                                 kTicksPerSecond / 30000 * 1001,
                                 kTicksPerSecond / 30,
                                 kTicksPerSecond / 50,
                                 kTicksPerSecond / 60000 * 1001,
                                 kTicksPerSecond / 60};

prSuiteError TicksPerSecond(PrTime* ticks) {
  *ticks = kTicksPerSecond;
  return 0;
}

prSuiteError TicksPerVideoFrame(PrVideoFrameRates code, PrTime* ticks) {
  *ticks = kTicksPerFrame[code];
  return 0;
}

const PrSDKTimeSuite kSuite = {TicksPerSecond, TicksPerVideoFrame, nullptr};

std::pair<int, int> RateOf(PrTime duration) {
  csSDK_int32 scale = -1;
  csSDK_int32 sample_size = -1;
  ConvertPrTimeToScaleSampleSize(&kSuite, duration, &scale, &sample_size);
  return {scale, sample_size};
}

PrTime DurationOf(csSDK_int32 scale, csSDK_int32 sample_size) {
  PrTime duration = -1;
  ConvertScaleSampleSizeToPrTime(&kSuite, scale, sample_size, &duration);
  return duration;
}

struct Grouping : std::numpunct<char> {
  std::string do_grouping() const override { return "\3"; }
};

}  // namespace

TEST(ExportControllerTime, WritesTimesAsPlainDigits) {
  const std::locale before = std::locale::global(std::locale(std::locale(), new Grouping));
  EXPECT_EQ(timestr(1795000000), "1795000000");
  EXPECT_EQ(timestr(0), "0");
  EXPECT_EQ(timestr(-12), "-12");
  std::locale::global(before);
}

TEST(ExportControllerTime, ReadsARateFromAFramesDuration) {
  EXPECT_EQ(RateOf(kTicksPerSecond / 25), std::make_pair(25, 1));
  EXPECT_EQ(RateOf(kTicksPerSecond), std::make_pair(1, 1));
  EXPECT_EQ(RateOf(kTicksPerFrame[7]), std::make_pair(60000, 1001));
  EXPECT_EQ(RateOf(kTicksPerFrame[4]), std::make_pair(30000, 1001));
  EXPECT_EQ(RateOf(kTicksPerFrame[1]), std::make_pair(24000, 1001));
  EXPECT_EQ(RateOf(kTicksPerSecond / 25 + 1), std::make_pair(-1, -1));
  EXPECT_EQ(RateOf(0), std::make_pair(-1, -1));
}

TEST(ExportControllerTime, FindsADurationForEveryWayOfWritingARate) {
  const struct {
    int scale, sample_size, code;
  } rows[] = {{24000, 1001, 1}, {23976, 1000, 1}, {2397, 100, 1}, {24, 1, 2}, {25, 7, 3},
              {30000, 1001, 4}, {29970, 1000, 4}, {2997, 100, 4}, {30, 1, 5}, {50, 1, 6},
              {60000, 1001, 7}, {5994, 100, 7},   {60, 1, 8}};
  for (const auto& row : rows) {
    EXPECT_EQ(DurationOf(row.scale, row.sample_size), kTicksPerFrame[row.code]) << row.scale << "/" << row.sample_size;
  }
  EXPECT_EQ(DurationOf(59940, 1000), -1);  // the 60 family has no row of thousandths
  EXPECT_EQ(DurationOf(24000, 1000), -1);
  PrTime untouched = 5;
  ConvertScaleSampleSizeToPrTime(nullptr, 25, 1, &untouched);
  EXPECT_EQ(untouched, 5);
}
