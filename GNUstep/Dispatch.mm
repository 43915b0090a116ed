#import <Cocoa/Cocoa.h>
#import <WakeEventLoop.h>
#include <dispatch/dispatch.h>

#include <deque>
#include <mutex>

namespace {

// Queues are told apart by address alone.
char main_queue_tag;
char global_queue_tag;

std::mutex main_queue_mutex;
std::deque<dispatch_block_t> main_queue_blocks;  // copied blocks, each owned by the queue
bool main_queue_is_draining = false;             // main thread only

// Owns one copied block, also when the block throws.
struct OwnedBlock {
  dispatch_block_t block;
  explicit OwnedBlock(dispatch_block_t copied) : block(copied) {}
  ~OwnedBlock() { Block_release(block); }
  OwnedBlock(const OwnedBlock &) = delete;
  OwnedBlock &operator=(const OwnedBlock &) = delete;
};

dispatch_block_t TakeFromMainQueue() {
  std::lock_guard<std::mutex> lock(main_queue_mutex);
  if (main_queue_blocks.empty()) return nullptr;
  dispatch_block_t block = main_queue_blocks.front();
  main_queue_blocks.pop_front();
  return block;
}

NSArray *Modes() {
  return @[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ];
}

bool MainQueueIsEmpty() {
  std::lock_guard<std::mutex> lock(main_queue_mutex);
  return main_queue_blocks.empty();
}

// Asks the main thread to run what is queued. Any thread.
void WakeMainThread();

// Marks the main queue as at work for one scope. A block that raises leaves the scope early, and the run loop swallows
// what it raised: the blocks behind it are asked for again.
struct Draining {
  Draining() { main_queue_is_draining = true; }
  ~Draining() {
    main_queue_is_draining = false;
    if (!MainQueueIsEmpty()) WakeMainThread();
  }
};

}  // namespace

@interface OrvDispatchWork : NSObject {
  dispatch_block_t block;
}
- (id)initWithBlock:(dispatch_block_t)aBlock;
- (void)runInBackground;
+ (void)wakeMainThread;
+ (void)queueDraining;
+ (void)drainMainQueue;
+ (void)endPolling;
@end

@implementation OrvDispatchWork

- (id)initWithBlock:(dispatch_block_t)aBlock {
  if ((self = [super init])) block = Block_copy(aBlock);
  return self;
}

- (void)dealloc {
  if (block) Block_release(block);
  [super dealloc];
}

- (void)runInBackground {
  @autoreleasepool {
    OwnedBlock owned(block);
    block = nullptr;
    owned.block();
  }
}

+ (void)wakeMainThread {
  @autoreleasepool {
    [self performSelectorOnMainThread:@selector(queueDraining) withObject:nil waitUntilDone:NO modes:Modes()];
  }
}

// The run loop takes all requests that have come in as one batch, and those behind one that runs a modal loop would
// wait until it ends. As the last of the next batch the queue keeps nobody waiting.
+ (void)queueDraining {
  [[NSRunLoop currentRunLoop] performSelector:@selector(drainMainQueue)
                                       target:self
                                     argument:nil
                                        order:NSUIntegerMax
                                        modes:Modes()];
  [NSThread detachNewThreadSelector:@selector(requestEndOfPolling) toTarget:self withObject:nil];
}

// The run loop looks at the queue's place in the batch only when a request of another thread ends its poll().
+ (void)requestEndOfPolling {
  @autoreleasepool {
    [self performSelectorOnMainThread:@selector(endPolling) withObject:nil waitUntilDone:NO modes:Modes()];
  }
}

+ (void)endPolling {
}

+ (void)drainMainQueue {
  if (main_queue_is_draining) return;  // a nested run loop does not re-enter the serial queue
  Draining draining;
  while (dispatch_block_t block = TakeFromMainQueue()) {
    OwnedBlock owned(block);
    @autoreleasepool {
      block();
    }
  }
  WakeEventLoop();
}

@end

namespace {

void WakeMainThread() {
  // A request of the main thread to itself does not end the run loop's poll(); one from another thread does.
  if ([NSThread isMainThread]) {
    [NSThread detachNewThreadSelector:@selector(wakeMainThread) toTarget:[OrvDispatchWork class] withObject:nil];
  } else {
    [OrvDispatchWork wakeMainThread];
  }
}

}  // namespace

dispatch_queue_t dispatch_get_main_queue(void) {
  return reinterpret_cast<dispatch_queue_t>(&main_queue_tag);
}

dispatch_queue_t dispatch_get_global_queue(long, unsigned long) {
  return reinterpret_cast<dispatch_queue_t>(&global_queue_tag);
}

void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
  if (queue != dispatch_get_main_queue()) {
    OrvDispatchWork *work = [[OrvDispatchWork alloc] initWithBlock:block];
    [NSThread detachNewThreadSelector:@selector(runInBackground) toTarget:work withObject:nil];
    [work release];
    return;
  }
  bool queue_was_empty;
  {
    std::lock_guard<std::mutex> lock(main_queue_mutex);
    queue_was_empty = main_queue_blocks.empty();
    main_queue_blocks.push_back(Block_copy(block));
  }
  if (queue_was_empty) WakeMainThread();
}
