// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/AppKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSImageRep : NSObject <NSCopying, NSCoding>
@end

@interface NSBitmapImageRep : NSImageRep <NSSecureCoding>
- (nullable instancetype)initWithFocusedViewRect:(NSRect)rect API_DEPRECATED("", macos(10.0, 10.14));
@end

NS_ASSUME_NONNULL_END
