// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/AppKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSColor : NSObject <NSCopying, NSSecureCoding>
@property (class, strong, readonly) NSColor *clearColor;
@property (class, strong, readonly) NSColor *whiteColor;
@property (class, strong, readonly) NSColor *keyboardFocusIndicatorColor API_AVAILABLE(macos(10.0));
+ (NSColor *)colorWithPatternImage:(NSImage *)image;
- (void)set;
@end

NS_ASSUME_NONNULL_END
