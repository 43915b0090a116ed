// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(uint64_t, NSActivityOptions) { NSActivityIdleSystemSleepDisabled = (1ULL << 20), NSActivityUserInitiated = (0x00FFFFFFULL | NSActivityIdleSystemSleepDisabled) };

@interface NSProcessInfo : NSObject
@property (class, readonly, strong) NSProcessInfo *processInfo;
@end

@interface NSProcessInfo (NSProcessInfoActivity)
- (id<NSObject>)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString *)reason API_AVAILABLE(macos(10.9));
- (void)endActivity:(id<NSObject>)activity API_AVAILABLE(macos(10.9));
@end

NS_ASSUME_NONNULL_END
