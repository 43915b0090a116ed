#import <Cocoa/Cocoa.h>
#import <WakeEventLoop.h>

#include "WindowScript.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

#include "RunScript.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kDeadline(10);
constexpr std::chrono::milliseconds kPollInterval(5);

struct Work {
  std::function<void()> run;
  bool done = false;
};

std::mutex work_mutex;
std::condition_variable work_done;
std::deque<std::shared_ptr<Work>> work_queue;

NSArray *Modes() {
  return @[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ];
}

}  // namespace

@interface WindowTestPump : NSObject
+ (void)wake;
+ (void)pump;
@end

@implementation WindowTestPump

+ (void)wake {
  @autoreleasepool {
    [self performSelectorOnMainThread:@selector(pump) withObject:nil waitUntilDone:NO modes:Modes()];
  }
}

+ (void)pump {
  std::shared_ptr<Work> work;
  bool more = false;
  {
    std::lock_guard<std::mutex> lock(work_mutex);
    if (work_queue.empty()) return;
    work = work_queue.front();
    work_queue.pop_front();
    more = !work_queue.empty();
  }
  if (more) [self wake];  // what waits behind work that opens a modal loop runs inside that loop
  @autoreleasepool {
    work->run();
  }
  WakeEventLoop();
  std::lock_guard<std::mutex> lock(work_mutex);
  work->done = true;
  work_done.notify_all();
}

@end

namespace window_test {

namespace {

std::shared_ptr<Work> Enqueue(std::function<void()> run) {
  auto work = std::make_shared<Work>();
  work->run = std::move(run);
  {
    std::lock_guard<std::mutex> lock(work_mutex);
    work_queue.push_back(work);
  }
  [WindowTestPump wake];
  return work;
}

// Ends the modal loops that a failed script has left behind, until the body has ended.
void AbandonModalLoops(const std::atomic<bool> &body_ended) {
  while (!body_ended) {
    Enqueue([&body_ended] {
      NSWindow *window = body_ended ? nil : [NSApp modalWindow];
      if (!window) return;
      [window orderOut:nil];
      [NSApp stopModal];
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
}

}  // namespace

void Script::OnMain(const std::function<void()> &work) {
  std::shared_ptr<Work> queued = Enqueue(work);
  std::unique_lock<std::mutex> lock(work_mutex);
  if (work_done.wait_for(lock, kDeadline, [&queued] { return queued->done; })) return;
  throw ScriptFailure{"work on the main thread to end; it opened a modal window?"};
}

void Script::Post(std::function<void()> work) {
  Enqueue(std::move(work));
}

void Script::WaitFor(const char *what, const std::function<bool()> &condition) {
  const Clock::time_point deadline = Clock::now() + kDeadline;
  bool holds = false;
  do {
    OnMain([&condition, &holds] { holds = condition(); });
    if (holds) return;
    std::this_thread::sleep_for(kPollInterval);
  } while (Clock::now() < deadline);
  throw ScriptFailure{what};
}

void RunWithScript(const std::function<void()> &body, const std::function<void(Script &)> &script) {
  std::atomic<bool> body_ended(false);
  std::atomic<bool> script_ended(false);
  std::thread thread([&script, &body_ended, &script_ended] {
    @autoreleasepool {
      Script actions;
      std::string failure;
      if (!RunScript(script, actions, &failure)) {
        ADD_FAILURE() << "the script waited in vain: " << failure;
        AbandonModalLoops(body_ended);
      }
    }
    script_ended = true;
  });
  @autoreleasepool {
    body();
  }
  body_ended = true;
  while (!SpinUntil([&script_ended] { return script_ended.load(); })) {
  }
  thread.join();
}

bool SpinUntil(const std::function<bool()> &condition) {
  const Clock::time_point deadline = Clock::now() + kDeadline;
  while (!condition()) {
    if (Clock::now() > deadline) return false;
    @autoreleasepool {
      NSDate *soon = [NSDate dateWithTimeIntervalSinceNow:0.01];
      NSEvent *event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                          untilDate:soon
                                             inMode:NSDefaultRunLoopMode
                                            dequeue:YES];
      if (event) [NSApp sendEvent:event];
    }
  }
  return true;
}

}  // namespace window_test
