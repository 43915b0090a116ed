// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/AppKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSUInteger, NSEventType) { NSEventTypeKeyDown = 10 };
typedef NS_OPTIONS(NSUInteger, NSEventModifierFlags) { NSEventModifierFlagShift = 1 << 17, NSEventModifierFlagControl = 1 << 18, NSEventModifierFlagOption = 1 << 19, NSEventModifierFlagCommand = 1 << 20 };

@interface NSEvent : NSObject <NSCopying, NSCoding>
@property (readonly) NSEventType type;
@property (readonly) NSEventModifierFlags modifierFlags;
@property (nullable, readonly, copy) NSString *charactersIgnoringModifiers;
@end

NS_ASSUME_NONNULL_END
