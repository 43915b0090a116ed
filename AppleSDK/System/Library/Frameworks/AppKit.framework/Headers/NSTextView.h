// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/NSText.h>

NS_ASSUME_NONNULL_BEGIN

@protocol NSTextViewDelegate;

@interface NSTextView : NSText
@property (nullable, assign) id<NSTextViewDelegate> delegate;
@end

@protocol NSTextViewDelegate <NSObject>
@optional
- (BOOL)textView:(NSTextView *)textView doCommandBySelector:(SEL)command;
@end

NS_ASSUME_NONNULL_END
