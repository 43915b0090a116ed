#include "Ticks.h"

#include <cmath>
#include <iterator>

namespace orvane_host {

std::int64_t TicksPerFrame(Rational rate) {
  return (kTicksPerSecond * rate.denominator + rate.numerator / 2) / rate.numerator;
}

std::optional<Rational> RateOfCode(int code) {
  constexpr Rational kRates[] = {{24000, 1001}, {24, 1}, {25, 1},       {30000, 1001},
                                 {30, 1},       {50, 1}, {60000, 1001}, {60, 1}};
  if (code < 1 || code > static_cast<int>(std::size(kRates))) return std::nullopt;
  return kRates[code - 1];
}

std::optional<std::int64_t> TicksPerSample(float rate) {
  if (!(rate >= 1 && rate <= 1e6F) || rate != std::floor(rate)) return std::nullopt;
  const auto samples = static_cast<std::int64_t>(rate);
  if (kTicksPerSecond % samples != 0) return std::nullopt;
  return kTicksPerSecond / samples;
}

}  // namespace orvane_host
