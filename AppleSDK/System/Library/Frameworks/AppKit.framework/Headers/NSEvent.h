// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/AppKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSUInteger, NSEventType) { NSEventTypeKeyDown = 10 };
static const NSEventType NSKeyDown API_DEPRECATED_WITH_REPLACEMENT("NSEventTypeKeyDown", macos(10.0, 10.12)) = NSEventTypeKeyDown;
typedef NS_OPTIONS(NSUInteger, NSEventModifierFlags) { NSEventModifierFlagShift = 1 << 17, NSEventModifierFlagControl = 1 << 18, NSEventModifierFlagOption = 1 << 19, NSEventModifierFlagCommand = 1 << 20 };

@interface NSEvent : NSObject <NSCopying, NSCoding>
+ (nullable NSEvent *)keyEventWithType:(NSEventType)type location:(NSPoint)location modifierFlags:(NSEventModifierFlags)flags timestamp:(NSTimeInterval)time windowNumber:(NSInteger)number context:(nullable NSGraphicsContext *)unused characters:(NSString *)characters charactersIgnoringModifiers:(NSString *)bare isARepeat:(BOOL)flag keyCode:(unsigned short)code;
+ (nullable NSEvent *)mouseEventWithType:(NSEventType)type location:(NSPoint)location modifierFlags:(NSEventModifierFlags)flags timestamp:(NSTimeInterval)time windowNumber:(NSInteger)number context:(nullable NSGraphicsContext *)unused eventNumber:(NSInteger)event clickCount:(NSInteger)clicks pressure:(float)pressure;
@property (readonly) NSEventType type;
@property (readonly) NSEventModifierFlags modifierFlags;
@property (nullable, readonly, copy) NSString *characters;
@property (nullable, readonly, copy) NSString *charactersIgnoringModifiers;
@end

NS_ASSUME_NONNULL_END
