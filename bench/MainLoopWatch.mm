#include "MainLoopWatch.h"

#import <Cocoa/Cocoa.h>
#import <EventLoop.h>

#include <algorithm>
#include <chrono>
#include <memory>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kInterval(1);

}  // namespace

// One question to the main loop. The answer may come when nobody waits for it any more, so it is kept alive by the
// loop.
@interface BenchMainLoopQuestion : NSObject {
 @public
  std::atomic<bool> answered;
  std::atomic<Clock::rep> answeredAt;
}
- (void)answer;
@end

@implementation BenchMainLoopQuestion

- (void)answer {
  answeredAt = Clock::now().time_since_epoch().count();
  answered = true;
}

@end

namespace bench {

MainLoopWatch::MainLoopWatch() : thread_([this] { Ask(); }) {}

MainLoopWatch::~MainLoopWatch() {
  Stop();
}

void MainLoopWatch::Stop() {
  stopped_ = true;
  if (thread_.joinable()) thread_.join();
}

void MainLoopWatch::Ask() {
  while (!stopped_) {
    @autoreleasepool {
      BenchMainLoopQuestion *question = [[[BenchMainLoopQuestion alloc] init] autorelease];
      const Clock::time_point asked = Clock::now();
      [question performSelectorOnMainThread:@selector(answer) withObject:nil waitUntilDone:NO modes:EventLoopModes()];
      while (!question->answered && !stopped_) std::this_thread::sleep_for(kInterval);
      const Clock::time_point end =
          question->answered ? Clock::time_point(Clock::duration(question->answeredAt)) : Clock::now();
      std::lock_guard<std::mutex> lock(mutex_);
      waits_.push_back(std::chrono::duration<double>(end - asked).count());
    }
    std::this_thread::sleep_for(kInterval);
  }
}

double MainLoopWatch::Longest() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return waits_.empty() ? 0 : *std::max_element(waits_.begin(), waits_.end());
}

double MainLoopWatch::Percentile99() const {
  std::lock_guard<std::mutex> lock(mutex_);
  if (waits_.empty()) return 0;
  std::vector<double> sorted = waits_;
  std::sort(sorted.begin(), sorted.end());
  return sorted[(sorted.size() - 1) * 99 / 100];
}

}  // namespace bench
