// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/NSCell.h>
#import <AppKit/NSControl.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSButton : NSControl
@property (copy) NSString *title;
@property (copy) NSAttributedString *attributedTitle;
@property (getter=isBordered) BOOL bordered;
@property NSControlStateValue state;
- (void)highlight:(BOOL)flag;
@end

NS_ASSUME_NONNULL_END
