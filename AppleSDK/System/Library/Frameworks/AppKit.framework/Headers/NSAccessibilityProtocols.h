// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/AppKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

@protocol NSAccessibility <NSObject>
@property (nullable, copy) NSString *accessibilityLabel API_AVAILABLE(macos(10.10));
@end

NS_ASSUME_NONNULL_END
