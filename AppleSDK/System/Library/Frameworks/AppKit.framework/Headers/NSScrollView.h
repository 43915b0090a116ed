// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSScrollView : NSView
- (void)flashScrollers API_AVAILABLE(macos(10.7));
@end

NS_ASSUME_NONNULL_END
