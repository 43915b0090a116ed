// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSProgressIndicator : NSView
@property double doubleValue;
@property double maxValue;
- (void)startAnimation:(nullable id)sender;
- (void)stopAnimation:(nullable id)sender;
@end

NS_ASSUME_NONNULL_END
