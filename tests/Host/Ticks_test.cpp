#include "Ticks.h"

#include <gtest/gtest.h>

namespace orvane_host {
namespace {

// Worked out by hand from 254016000000 ticks a second.
TEST(Ticks, EveryStandardRateHasItsWholeNumber) {
  const std::int64_t expected[] = {10594584000, 10584000000, 10160640000, 8475667200,
                                   8467200000,  5080320000,  4237833600,  4233600000};
  for (int code = 1; code <= 8; ++code) {
    const auto rate = RateOfCode(code);
    ASSERT_TRUE(rate) << code;
    EXPECT_EQ(TicksPerFrame(*rate), expected[code - 1]) << code;
    EXPECT_EQ(kTicksPerSecond * rate->denominator % rate->numerator, 0) << code;
  }
  EXPECT_FALSE(RateOfCode(0));
  EXPECT_FALSE(RateOfCode(9));
  EXPECT_FALSE(RateOfCode(-1));
}

TEST(Ticks, OtherRatesAreRoundedToTheNearestTick) {
  EXPECT_EQ(TicksPerFrame({240, 1}), 1058400000);
  EXPECT_EQ(TicksPerFrame({11, 1}), 23092363636);             // .36 down
  EXPECT_EQ(TicksPerFrame({13, 1}), 19539692308);             // .69 up
  EXPECT_EQ(TicksPerFrame({1000000, 999999}), 254015745984);  // the largest product stays within 64 bits
}

TEST(Ticks, AudioSamplesOfUsualRatesOnly) {
  EXPECT_EQ(TicksPerSample(48000.F), 5292000);
  EXPECT_EQ(TicksPerSample(44100.F), 5760000);
  EXPECT_EQ(TicksPerSample(96000.F), 2646000);
  EXPECT_FALSE(TicksPerSample(0.F));
  EXPECT_FALSE(TicksPerSample(-48000.F));
  EXPECT_FALSE(TicksPerSample(44100.5F));
  EXPECT_FALSE(TicksPerSample(47999.F));
}

}  // namespace
}  // namespace orvane_host
