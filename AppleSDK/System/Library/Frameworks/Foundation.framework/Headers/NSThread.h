// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSThread : NSObject
@property (class, readonly) BOOL isMainThread API_AVAILABLE(macos(10.5));
@end

@interface NSObject (NSThreadPerformAdditions)
- (void)performSelectorOnMainThread:(SEL)selector withObject:(nullable id)argument waitUntilDone:(BOOL)wait modes:(nullable NSArray<NSString *> *)modes;
@end

NS_ASSUME_NONNULL_END
