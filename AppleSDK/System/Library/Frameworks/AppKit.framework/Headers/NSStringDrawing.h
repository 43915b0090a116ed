// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/AppKitDefines.h>

typedef NS_OPTIONS(NSInteger, NSStringDrawingOptions) { NSStringDrawingUsesLineFragmentOrigin = 1 << 0 };

@interface NSAttributedString (NSStringDrawing)
- (NSSize)size API_AVAILABLE(macos(10.0));
- (NSRect)boundingRectWithSize:(NSSize)size options:(NSStringDrawingOptions)options API_AVAILABLE(macos(10.0));
@end
