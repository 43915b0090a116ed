// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/AppKitDefines.h>

@class NSMenuItem;

NS_ASSUME_NONNULL_BEGIN

@interface NSMenu : NSObject <NSCopying, NSCoding>
- (instancetype)initWithTitle:(NSString *)title NS_DESIGNATED_INITIALIZER;
- (NSMenuItem *)addItemWithTitle:(NSString *)title action:(nullable SEL)action keyEquivalent:(NSString *)key;
@end

NS_ASSUME_NONNULL_END
