// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSValue : NSObject <NSCopying, NSSecureCoding>
@end

@interface NSNumber : NSValue
@property (readonly, copy) NSString *stringValue;
@property (readonly) NSInteger integerValue API_AVAILABLE(macos(10.5));
+ (NSNumber *)numberWithBool:(BOOL)value;
+ (NSNumber *)numberWithChar:(char)value;
+ (NSNumber *)numberWithInt:(int)value;
@end

NS_ASSUME_NONNULL_END
