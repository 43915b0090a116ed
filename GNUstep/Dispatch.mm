#import <Cocoa/Cocoa.h>
#import <EventLoop.h>
#include <dispatch/dispatch.h>
#include <sys/eventfd.h>

#include <deque>
#include <memory>
#include <mutex>

namespace {

// Queues are told apart by address alone.
char main_queue_tag;
char global_queue_tag;

std::mutex main_queue_mutex;
std::deque<dispatch_block_t> main_queue_blocks;  // copied blocks, each owned by the queue
bool main_queue_is_draining = false;             // main thread only

// Owns one copied block, also when the block throws.
using OwnedBlock = std::unique_ptr<const void, decltype(&_Block_release)>;

dispatch_block_t TakeFromMainQueue() {
  std::lock_guard<std::mutex> lock(main_queue_mutex);
  if (main_queue_blocks.empty()) return nullptr;
  dispatch_block_t block = main_queue_blocks.front();
  main_queue_blocks.pop_front();
  return block;
}

// Can be read from as soon as the main thread has blocks to run; its run loop watches it.
int WakeDescriptor() {
  static const int descriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  return descriptor;
}

void DrainMainQueue() {
  if (main_queue_is_draining) return;  // a nested run loop does not re-enter the serial queue
  main_queue_is_draining = true;
  while (dispatch_block_t block = TakeFromMainQueue()) {
    const OwnedBlock owned(block, _Block_release);
    @autoreleasepool {
      // What one block raises must not keep those behind it from running.
      @try {
        block();
      } @catch (NSException *raised) {
        NSLog(@"A block of the main queue raised %@", raised);
      }
    }
  }
  main_queue_is_draining = false;
  WakeEventLoop();
}

}  // namespace

@interface OrvQueues : NSObject <RunLoopEvents>
+ (void)runInBackground:(NSValue *)block;
@end

@implementation OrvQueues

// On the main thread, which loads this code.
+ (void)load {
  @autoreleasepool {
    // With the first thread Foundation takes up its locks: what draws a text meanwhile would give back one that it
    // never took. A thread that does nothing is the first, before there is anything to draw; its object stays.
    static NSThread *first = [[NSThread alloc] initWithTarget:self selector:@selector(class) object:nil];
    [first start];
    OrvQueues *watcher = [[OrvQueues alloc] init];
    void *descriptor = reinterpret_cast<void *>(static_cast<intptr_t>(WakeDescriptor()));
    for (NSString *mode in EventLoopModes()) {
      [[NSRunLoop currentRunLoop] addEvent:descriptor type:ET_RDESC watcher:watcher forMode:mode];
    }
  }
}

- (void)receivedEvent:(void *)data type:(RunLoopEventType)type extra:(void *)extra forMode:(NSString *)mode {
  eventfd_t wakes = 0;
  eventfd_read(WakeDescriptor(), &wakes);
  DrainMainQueue();
}

// Takes over the copied block.
+ (void)runInBackground:(NSValue *)block {
  @autoreleasepool {
    const OwnedBlock owned([block pointerValue], _Block_release);
    reinterpret_cast<dispatch_block_t>([block pointerValue])();
  }
}

@end

dispatch_queue_t dispatch_get_main_queue(void) {
  return reinterpret_cast<dispatch_queue_t>(&main_queue_tag);
}

dispatch_queue_t dispatch_get_global_queue(long, unsigned long) {
  return reinterpret_cast<dispatch_queue_t>(&global_queue_tag);
}

void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
  if (queue != dispatch_get_main_queue()) {
    [NSThread detachNewThreadSelector:@selector(runInBackground:)
                             toTarget:[OrvQueues class]
                           withObject:[NSValue valueWithPointer:Block_copy(block)]];
    return;
  }
  {
    std::lock_guard<std::mutex> lock(main_queue_mutex);
    main_queue_blocks.push_back(Block_copy(block));
  }
  eventfd_write(WakeDescriptor(), 1);
}
