// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/NSText.h>
#import <AppKit/NSView.h>

@class NSCell;

NS_ASSUME_NONNULL_BEGIN

@interface NSControl : NSView
- (instancetype)initWithFrame:(NSRect)frame NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder *)coder NS_DESIGNATED_INITIALIZER;
@property (nullable, weak) id target;
@property (nullable) SEL action;
@property (getter=isEnabled) BOOL enabled;
@property (getter=isHighlighted) BOOL highlighted API_AVAILABLE(macos(10.10));
@property (nullable, strong) __kindof NSCell *cell;
@property (copy) NSString *stringValue;
@property (copy) NSAttributedString *attributedStringValue;
@property NSTextAlignment alignment;
@property (nullable, strong) NSFont *font;
- (nullable NSText *)currentEditor;
- (void)performClick:(nullable id)sender;
@end

NS_ASSUME_NONNULL_END
