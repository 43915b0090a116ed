#import <Cocoa/Cocoa.h>

#include "MainThread.h"

@interface OrvMainThreadWork : NSObject {
  const std::function<void()> *work;  // not owned: its owner waits
}
- (id)initWithWork:(const std::function<void()> *)someWork;
- (void)run;
@end

@implementation OrvMainThreadWork

- (id)initWithWork:(const std::function<void()> *)someWork {
  if ((self = [super init])) work = someWork;
  return self;
}

- (void)run {
  (*work)();
}

@end

void RunOnMainThreadAndWait(const std::function<void()> &work) {
  OrvMainThreadWork *call = [[OrvMainThreadWork alloc] initWithWork:&work];
  NSArray *modes = @[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ];
  [call performSelectorOnMainThread:@selector(run) withObject:nil waitUntilDone:YES modes:modes];
  [call release];
}
