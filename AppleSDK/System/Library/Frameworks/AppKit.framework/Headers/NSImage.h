// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/AppKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString *NSImageName;

@interface NSImage : NSObject <NSCopying, NSSecureCoding>
+ (nullable NSImage *)imageNamed:(NSImageName)name;
@end

NS_ASSUME_NONNULL_END
