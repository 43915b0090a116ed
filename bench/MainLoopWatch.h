// How long the main loop lets others wait.
#pragma once

#include <atomic>
#include <thread>

namespace bench {

/// While it lives, a thread asks the main loop for a run about every millisecond, as a key or a click does, and notes
/// how long it had to wait. Made and destroyed on the main thread; the main loop must run meanwhile.
class MainLoopWatch {
 public:
  MainLoopWatch();
  ~MainLoopWatch();
  MainLoopWatch(const MainLoopWatch&) = delete;
  MainLoopWatch& operator=(const MainLoopWatch&) = delete;

  /// Ends the watch. Returns the longest wait, in seconds, one that was still unanswered at the end included; 0 when
  /// there was none. Main thread.
  double Stop();

 private:
  void Ask();

  std::atomic<bool> stopped_{false};
  double longest_ = 0;  // of the thread, until it has ended
  std::thread thread_;
};

}  // namespace bench
