// The part of Grand Central Dispatch that the plug-in uses: blocks on the main queue and on a background queue.
#pragma once

#include <Block.h>

typedef void (^dispatch_block_t)(void);
typedef struct dispatch_queue_s *dispatch_queue_t;

enum { DISPATCH_QUEUE_PRIORITY_DEFAULT = 0 };

#ifdef __cplusplus
extern "C" {
#endif

/// The serial queue of the main thread. Its blocks run in the default, modal-panel and event-tracking modes of the main
/// run loop. While one of them runs a modal loop, later ones wait, as on macOS.
dispatch_queue_t dispatch_get_main_queue(void);

/// The concurrent background queue. Each block runs on a thread of its own.
dispatch_queue_t dispatch_get_global_queue(long priority, unsigned long flags);

/// Copies the block, queues it and returns at once. Any thread.
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);

#ifdef __cplusplus
}
#endif
