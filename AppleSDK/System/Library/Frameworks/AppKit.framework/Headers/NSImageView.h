// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/NSControl.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSImageView : NSControl
@property (nullable, strong) NSImage *image;
@end

NS_ASSUME_NONNULL_END
