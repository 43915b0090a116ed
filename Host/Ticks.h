// How the host counts time: in ticks, of which a frame of every standard rate is a whole number.
#pragma once

#include <cstdint>
#include <optional>

namespace orvane_host {

/// The application's own unit.
constexpr std::int64_t kTicksPerSecond = 254016000000;

/// A fraction such as a frame rate in frames a second; both parts are positive.
struct Rational {
  std::int64_t numerator = 0;
  std::int64_t denominator = 1;
};

/// The duration of one frame in ticks, rounded to the nearest tick for a rate that does not divide a second.
/// The parts of the rate are positive and at most 1000000.
std::int64_t TicksPerFrame(Rational rate);

/// The frame rate of one of the time suite's codes (1 to 8), or nothing for another number.
std::optional<Rational> RateOfCode(int code);

/// The duration of one sample in ticks, or nothing for a rate (samples a second) that does not divide a second.
std::optional<std::int64_t> TicksPerSample(float rate);

}  // namespace orvane_host
