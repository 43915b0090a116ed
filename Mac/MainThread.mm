#include "MainThread.h"

#import <Cocoa/Cocoa.h>

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

static NSArray *AllModes() {
  return @[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ];
}

void RunOnMainThreadAndWait(const std::function<void()> &work) {
  OrvMainThreadWork *call = [[OrvMainThreadWork alloc] initWithWork:&work];
  [call performSelectorOnMainThread:@selector(run) withObject:nil waitUntilDone:YES modes:AllModes()];
  [call release];
}

void SendOnMainThread(id target, SEL message, id argument) {
  [target performSelectorOnMainThread:message withObject:argument waitUntilDone:NO modes:AllModes()];
}

NSTimer *RepeatOnMainThread(NSTimeInterval interval, id target, SEL message) {
  NSTimer *timer = [NSTimer timerWithTimeInterval:interval target:target selector:message userInfo:nil repeats:YES];
  for (NSString *mode in AllModes()) [[NSRunLoop currentRunLoop] addTimer:timer forMode:mode];
  return timer;
}
