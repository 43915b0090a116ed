// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSObject (NSKeyValueCoding)
- (void)setValue:(nullable id)value forKey:(NSString *)key;
@end

NS_ASSUME_NONNULL_END
