// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/NSCell.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSButtonCell : NSActionCell
- (void)drawBezelWithFrame:(NSRect)frame inView:(NSView *)view;
- (NSRect)drawTitle:(NSAttributedString *)title withFrame:(NSRect)frame inView:(NSView *)view;
@end

NS_ASSUME_NONNULL_END
