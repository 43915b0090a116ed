// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <objc/objc.h>
#include <os/availability.h>

@protocol OS_dispatch_queue;

typedef id<OS_dispatch_queue> dispatch_queue_t;
typedef void (^dispatch_block_t)(void);

#define DISPATCH_QUEUE_PRIORITY_DEFAULT 0

extern "C" {
extern struct dispatch_queue_s _dispatch_main_q API_AVAILABLE(macos(10.6));
dispatch_queue_t _Nonnull dispatch_get_global_queue(intptr_t identifier, uintptr_t flags) API_AVAILABLE(macos(10.6));
void dispatch_async(dispatch_queue_t _Nonnull queue, dispatch_block_t _Nonnull block) API_AVAILABLE(macos(10.6));
}

static inline dispatch_queue_t _Nonnull dispatch_get_main_queue(void) {
  return (dispatch_queue_t)(void *)&_dispatch_main_q;
}
