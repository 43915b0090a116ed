// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSURL : NSObject <NSSecureCoding, NSCopying>
+ (nullable instancetype)URLWithString:(NSString *)text;
@property (nullable, readonly, copy) NSString *scheme;
@property (nullable, readonly, copy) NSString *host;
@end

NS_ASSUME_NONNULL_END
