// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/AppKitDefines.h>

@interface NSAttributedString (NSStringDrawing)
- (NSSize)size API_AVAILABLE(macos(10.0));
@end
