// How fast a transfer goes and how long it will still take.
#pragma once

#include <deque>
#include <string>

/// Looks at the last seconds of a transfer. Times are in seconds from any start, amounts in bytes. Not locked.
class TransferRate {
 public:
  /// From so many seconds without bytes on, a transfer stalls. A shorter silence is usual on a slow line.
  static constexpr double kStallSeconds = 5;

  /// Notes the amount that has been transferred by that time, which is not before that of the last call.
  void Add(double time, double done);

  /// How long the amount had not grown at the last call of Add.
  double SecondsWithoutBytes() const { return samples_.empty() ? 0 : latest_ - samples_.back().time; }

  /// Rate and remaining time in words, such as "3.1 MB/s, about 4 minutes left"; empty until some seconds have been
  /// seen, while hardly anything moves, and when everything has been sent. A stall is not counted.
  std::string Text(double total) const;

 private:
  struct Sample {
    double time;
    double done;
  };
  std::deque<Sample> samples_;  // at each the amount had grown
  double latest_ = 0;
};
