// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/AppKitDefines.h>

@protocol NSTextInputClient
- (BOOL)hasMarkedText;
- (NSRange)markedRange;
@end
