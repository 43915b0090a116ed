// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSDate.h>
#import <Foundation/NSObject.h>

@class NSTimer;

NS_ASSUME_NONNULL_BEGIN

typedef NSString *NSRunLoopMode;

extern "C" {
extern NSRunLoopMode const NSDefaultRunLoopMode;
}

@interface NSRunLoop : NSObject
@property (class, readonly, strong) NSRunLoop *currentRunLoop;
- (void)addTimer:(NSTimer *)timer forMode:(NSRunLoopMode)mode;
@end

@interface NSObject (NSDelayedPerforming)
- (void)performSelector:(SEL)selector withObject:(nullable id)object afterDelay:(NSTimeInterval)delay;
@end

NS_ASSUME_NONNULL_END
