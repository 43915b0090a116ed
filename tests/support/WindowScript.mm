#include "WindowScript.h"

#import <Cocoa/Cocoa.h>
#import <EventLoop.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>

#include "FailureOf.h"

namespace {

using Clock = std::chrono::steady_clock;

// Instrumented code is many times slower, above all where every allocation's stack is kept.
#if defined(__has_feature) && (__has_feature(address_sanitizer) || __has_feature(thread_sanitizer))
constexpr std::chrono::seconds kDeadline(90);
#else
constexpr std::chrono::seconds kDeadline(10);
#endif
constexpr std::chrono::milliseconds kPollInterval(5);
constexpr std::chrono::milliseconds kTimeToTakeWork(100);

// Guarded by the mutex but for run.
struct Work {
  std::function<void()> run;
  bool done = false;
};

std::mutex work_mutex;
std::condition_variable work_done;
std::deque<std::shared_ptr<Work>> work_queue;

}  // namespace

@interface WindowTestPump : NSObject
+ (void)wake;
+ (void)pump;
@end

@implementation WindowTestPump

+ (void)wake {
  @autoreleasepool {
    [self performSelectorOnMainThread:@selector(pump) withObject:nil waitUntilDone:NO modes:EventLoopModes()];
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

// Ends the innermost modal loop, again and again, until it is over: for modal windows that nobody is left to close.
void EndModalLoopsUntil(const std::function<bool()> &over) {
  const auto finished = std::make_shared<std::atomic<bool>>(false);  // outlives this call in what is still queued
  while (!over()) {
    Enqueue([finished] {
      NSWindow *window = *finished ? nil : [NSApp modalWindow];
      [window orderOut:nil];
      if (window) [NSApp stopModal];
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  *finished = true;
}

}  // namespace

void Script::OnMain(const std::function<void()> &work) {
  const std::shared_ptr<Work> queued = Enqueue(work);
  const Clock::time_point deadline = Clock::now() + kDeadline;
  std::unique_lock<std::mutex> lock(work_mutex);
  while (!work_done.wait_for(lock, kTimeToTakeWork, [&queued] { return queued->done; })) {
    // The main thread takes what waits for it in one go. When the first of that opens a modal window, the rest, and
    // with it this work, waits for the window to close: another call gets through to the window's own loop.
    [WindowTestPump wake];
    if (Clock::now() < deadline) continue;
    lock.unlock();
    // The work refers to the caller's variables: it must have ended when this throws.
    EndModalLoopsUntil([&queued] {
      std::lock_guard<std::mutex> guard(work_mutex);
      return queued->done;
    });
    throw std::runtime_error("work on the main thread to end; did it open a modal window?");
  }
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
  throw std::runtime_error(what);
}

void RunWithScript(const std::function<void()> &body, const std::function<void(Script &)> &script) {
  std::atomic<bool> body_ended(false);
  std::atomic<bool> script_ended(false);
  std::thread thread([&script, &body_ended, &script_ended] {
    @autoreleasepool {
      Script actions;
      const std::string failure = FailureOf([&script, &actions] { script(actions); });
      if (!failure.empty()) {
        ADD_FAILURE() << "the script waited in vain: " << failure;
        EndModalLoopsUntil([&body_ended] { return body_ended.load(); });
      }
    }
    script_ended = true;
  });
  @autoreleasepool {
    @try {
      body();
    } @catch (NSException *exception) {
      ADD_FAILURE() << "the body raised " << [[exception description] UTF8String];
    }
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
