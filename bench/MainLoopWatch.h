// How long the main loop lets others wait.
#pragma once

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

namespace bench {

/// While it lives, a thread asks the main loop for a run about every millisecond, as a key or a click does, and notes
/// how long each had to wait. Made and destroyed on the main thread; the main loop must run meanwhile.
class MainLoopWatch {
 public:
  MainLoopWatch();
  ~MainLoopWatch();
  MainLoopWatch(const MainLoopWatch&) = delete;
  MainLoopWatch& operator=(const MainLoopWatch&) = delete;

  /// Ends the watch; the figures below are complete after that. Main thread.
  void Stop();

  /// The longest wait, in seconds, one that was still unanswered at the end included; 0 when there was none.
  double Longest() const;

  /// The wait that 99 of 100 stayed below, in seconds.
  double Percentile99() const;

 private:
  void Ask();

  std::atomic<bool> stopped_{false};
  mutable std::mutex mutex_;
  std::vector<double> waits_;
  std::thread thread_;
};

}  // namespace bench
