#include "MainLoopWatch.h"

#import <Cocoa/Cocoa.h>
#import <EventLoop.h>

#include <algorithm>
#include <chrono>

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

double MainLoopWatch::Stop() {
  stopped_ = true;
  if (thread_.joinable()) thread_.join();
  return longest_;
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
      longest_ = std::max(longest_, std::chrono::duration<double>(end - asked).count());
    }
    std::this_thread::sleep_for(kInterval);
  }
}

}  // namespace bench
