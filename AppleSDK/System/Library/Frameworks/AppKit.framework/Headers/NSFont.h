// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/AppKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSFont : NSObject <NSCopying, NSSecureCoding>
+ (nullable NSFont *)fontWithName:(NSString *)name size:(CGFloat)size;
+ (NSFont *)systemFontOfSize:(CGFloat)size;
@property (readonly, copy) NSString *fontName;
@property (readonly) CGFloat pointSize;
@property (class, readonly) CGFloat systemFontSize;
@end

NS_ASSUME_NONNULL_END
