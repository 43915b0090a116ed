// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSObject.h>
#import <Foundation/NSString.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSCharacterSet : NSObject <NSCopying, NSMutableCopying, NSSecureCoding>
@property (readonly, class, copy) NSCharacterSet *whitespaceAndNewlineCharacterSet;
- (BOOL)characterIsMember:(unichar)unit;
@end

NS_ASSUME_NONNULL_END
