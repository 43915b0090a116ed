// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSObject.h>
#import <Foundation/NSRange.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString *NSAttributedStringKey;

@interface NSAttributedString : NSObject <NSCopying, NSMutableCopying, NSSecureCoding>
@property (readonly) NSUInteger length;
- (nullable id)attribute:(NSAttributedStringKey)name
                 atIndex:(NSUInteger)location
          effectiveRange:(nullable NSRange *)range;
@end

@interface NSMutableAttributedString : NSAttributedString
- (void)addAttribute:(NSAttributedStringKey)name value:(id)value range:(NSRange)range;
@end

NS_ASSUME_NONNULL_END
