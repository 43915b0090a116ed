// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSObjCRuntime.h>
#import <Foundation/NSZone.h>

@class NSArray<ObjectType>, NSCoder, NSString;

NS_ASSUME_NONNULL_BEGIN

@protocol NSObject
- (BOOL)isEqual:(nullable id)object;
@property (readonly) NSUInteger hash;
- (Class)class;
- (instancetype)self;
- (id)performSelector:(SEL)selector;
- (id)performSelector:(SEL)selector withObject:(nullable id)object;
- (BOOL)isKindOfClass:(Class)kind;
- (BOOL)respondsToSelector:(SEL)selector;
- (instancetype)retain;
- (oneway void)release;
- (instancetype)autorelease;
@end

@protocol NSCopying
- (id)copyWithZone:(nullable NSZone *)zone;
@end

@protocol NSMutableCopying
- (id)mutableCopyWithZone:(nullable NSZone *)zone;
@end

@protocol NSCoding
- (void)encodeWithCoder:(NSCoder *)coder;
- (nullable instancetype)initWithCoder:(NSCoder *)coder;
@end

@protocol NSSecureCoding <NSCoding>
@property (class, readonly) BOOL supportsSecureCoding;
@end

__attribute__((objc_root_class))
@interface NSObject <NSObject> {
  Class isa;
}
+ (instancetype)new;
+ (instancetype)allocWithZone:(nullable NSZone *)zone;
+ (instancetype)alloc;
+ (Class)class;
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (void)dealloc;
- (id)copy;
- (id)mutableCopy;
@end

@interface NSObject (NSCoderMethods)
@property (nullable, readonly) Class classForCoder;
@end

NS_ASSUME_NONNULL_END
