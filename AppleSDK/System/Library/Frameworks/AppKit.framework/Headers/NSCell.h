// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/AppKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSInteger NSControlStateValue;
static const NSControlStateValue NSControlStateValueOff = 0;
static const NSControlStateValue NSControlStateValueOn = 1;

typedef NS_ENUM(NSUInteger, NSLineBreakMode) { NSLineBreakByCharWrapping = 1, NSLineBreakByTruncatingTail = 4 };

@interface NSCell : NSObject <NSCopying, NSCoding>
@property NSLineBreakMode lineBreakMode;
@property BOOL showsFirstResponder;
@property (getter=isHighlighted) BOOL highlighted;
@end

@interface NSActionCell : NSCell
@end

NS_ASSUME_NONNULL_END
