// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSCoder.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSKeyedArchiver : NSCoder
+ (NSData *)archivedDataWithRootObject:(id)object API_DEPRECATED_WITH_REPLACEMENT("archivedDataWithRootObject:requiringSecureCoding:error:", macos(10.2, 10.14));
@end

@interface NSKeyedUnarchiver : NSCoder
+ (nullable id)unarchiveObjectWithData:(NSData *)data API_DEPRECATED_WITH_REPLACEMENT("unarchivedObjectOfClass:fromData:error:", macos(10.2, 10.14));
@end

NS_ASSUME_NONNULL_END
