// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSString.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSString (NSStringPathExtensions)
- (NSString *)stringByAppendingPathComponent:(NSString *)name;
@end

extern "C" NSString *NSTemporaryDirectory(void);

NS_ASSUME_NONNULL_END
