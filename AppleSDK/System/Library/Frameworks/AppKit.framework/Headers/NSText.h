// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSInteger, NSTextAlignment) {
  NSTextAlignmentLeft = 0,
#if defined(__arm64__)
  NSTextAlignmentCenter = 1,
  NSTextAlignmentRight = 2,
#else
  NSTextAlignmentRight = 1,
  NSTextAlignmentCenter = 2,
#endif
};

@interface NSText : NSView
@property (copy) NSString *string;
@property (nullable, strong) NSFont *font;
- (void)copy:(nullable id)sender;
- (void)cut:(nullable id)sender;
- (void)paste:(nullable id)sender;
- (void)selectAll:(nullable id)sender;
@end

NS_ASSUME_NONNULL_END
