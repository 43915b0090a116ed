#include "Ticks.h"

#include <cmath>

namespace orvane_host {

std::int64_t TicksPerFrame(Rational rate) {
  return (kTicksPerSecond * rate.denominator + rate.numerator / 2) / rate.numerator;
}

std::optional<Rational> RateOfCode(int code) {
  switch (code) {
    case 1:
      return Rational{24000, 1001};
    case 2:
      return Rational{24, 1};
    case 3:
      return Rational{25, 1};
    case 4:
      return Rational{30000, 1001};
    case 5:
      return Rational{30, 1};
    case 6:
      return Rational{50, 1};
    case 7:
      return Rational{60000, 1001};
    case 8:
      return Rational{60, 1};
    default:
      return std::nullopt;
  }
}

Rational StandardRate(Rational rate) {
  // The standard rates lie a thousandth apart at least.
  constexpr double kHair = 1e-5;
  const auto frames = [](Rational of) {
    return static_cast<double>(of.numerator) / static_cast<double>(of.denominator);
  };
  for (int code = 1; const auto standard = RateOfCode(code); ++code) {
    if (std::abs(frames(rate) / frames(*standard) - 1) < kHair) return *standard;
  }
  return rate;
}

std::optional<std::int64_t> TicksPerSample(float rate) {
  if (!(rate >= 1 && rate <= 1e6F) || rate != std::floor(rate)) return std::nullopt;
  const auto samples = static_cast<std::int64_t>(rate);
  if (kTicksPerSecond % samples != 0) return std::nullopt;
  return kTicksPerSecond / samples;
}

}  // namespace orvane_host
