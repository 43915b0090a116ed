// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSCoder : NSObject
- (void)encodeObject:(nullable id)object forKey:(NSString *)key;
- (nullable id)decodeObjectOfClass:(Class)kind forKey:(NSString *)key API_AVAILABLE(macos(10.8));
@end

NS_ASSUME_NONNULL_END
