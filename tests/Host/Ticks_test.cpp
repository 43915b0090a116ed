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

}  // namespace
}  // namespace orvane_host
