#include "TransferRate.h"

#include <cmath>
#include <cstdio>

namespace {

// A rate of fewer seconds jumps about; one of many more is out of date after a change.
constexpr double kSteadySeconds = 3;
constexpr double kSeenSeconds = 10;

// Less than this shows as no kilobyte at all.
constexpr double kSlowestRate = 500;

std::string Remaining(double seconds) {
  if (seconds < 60) return "less than a minute left";
  const double minutes = std::ceil(seconds / 60);
  if (minutes < 2) return "about a minute left";
  char text[64];
  if (minutes < 120) {
    std::snprintf(text, sizeof(text), "about %.0f minutes left", minutes);
  } else {
    std::snprintf(text, sizeof(text), "about %.0f hours left", std::round(minutes / 60));
  }
  return text;
}

}  // namespace

void TransferRate::Add(double time, double done) {
  latest_ = time;
  if (!samples_.empty() && !(done > samples_.back().done)) return;
  // After a stall, or when the machine has slept, what was before tells nothing.
  if (SecondsWithoutBytes() >= kStallSeconds) samples_.clear();
  samples_.push_back({time, done});
  while (samples_.size() > 1 && samples_[1].time <= time - kSeenSeconds) samples_.pop_front();
}

std::string TransferRate::Text(double total) const {
  if (samples_.empty()) return "";
  const double seconds = samples_.back().time - samples_.front().time;
  const double bytes = samples_.back().done - samples_.front().done;
  const double left = total - samples_.back().done;
  if (seconds < kSteadySeconds || !(left > 0)) return "";
  const double rate = bytes / seconds;
  if (!(rate >= kSlowestRate)) return "";
  char text[64];
  if (std::round(rate / 1e3) < 1e3) {
    std::snprintf(text, sizeof(text), "%.0f kB/s, ", rate / 1e3);
  } else {
    std::snprintf(text, sizeof(text), "%.1f MB/s, ", rate / 1e6);
  }
  return text + Remaining(left / rate);
}
