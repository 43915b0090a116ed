// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/AppKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSScreen : NSObject
@property (class, nullable, readonly, strong) NSScreen *mainScreen;
@property (readonly) NSRect visibleFrame;
@end

NS_ASSUME_NONNULL_END
