// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/NSCell.h>
#import <AppKit/NSText.h>

@interface NSParagraphStyle : NSObject <NSCopying, NSMutableCopying, NSSecureCoding>
@end

@interface NSMutableParagraphStyle : NSParagraphStyle
@property NSTextAlignment alignment API_AVAILABLE(macos(10.0));
@property NSLineBreakMode lineBreakMode API_AVAILABLE(macos(10.0));
@property CGFloat minimumLineHeight API_AVAILABLE(macos(10.0));
@end
