// How fast a transfer goes and how long it will still take.
#pragma once

#include <deque>
#include <string>

/// Looks at the last seconds of a transfer. Times are in seconds from any start, amounts in bytes. Not locked.
class TransferRate {
 public:
  /// Notes the amount that has been transferred by that time, which is not before that of the last call.
  void Add(double time, double done);

  /// Rate and remaining time in words, such as "3.1 MB/s, about 4 minutes left"; empty until some seconds have been
  /// seen, while hardly anything moves, and when everything has been sent.
  std::string Text(double total) const;

 private:
  struct Sample {
    double time;
    double done;
  };
  std::deque<Sample> samples_;
};
