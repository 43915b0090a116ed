// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSObject.h>
#import <Foundation/NSRange.h>

@class NSData;

NS_ASSUME_NONNULL_BEGIN

typedef unsigned short unichar;

typedef NSUInteger NSStringEncoding;
enum : NSStringEncoding { NSUTF8StringEncoding = 4 };

@interface NSString : NSObject <NSCopying, NSMutableCopying, NSSecureCoding>
@property (readonly) NSUInteger length;
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder *)coder NS_DESIGNATED_INITIALIZER;
@end

@interface NSString (NSStringExtensionMethods)
- (NSString *)substringWithRange:(NSRange)range;
- (void)getCharacters:(unichar *)buffer range:(NSRange)range;
- (BOOL)isEqualToString:(NSString *)string;
- (BOOL)hasSuffix:(NSString *)text;
@property (readonly, copy) NSString *lowercaseString;
- (NSString *)stringByPaddingToLength:(NSUInteger)length withString:(NSString *)text startingAtIndex:(NSUInteger)index;
- (NSString *)stringByAppendingString:(NSString *)text;
@property (readonly) const char *fileSystemRepresentation NS_RETURNS_INNER_POINTER;
@property (readonly) NSInteger integerValue API_AVAILABLE(macos(10.5));
@property (nullable, readonly) const char *UTF8String NS_RETURNS_INNER_POINTER;
- (nullable NSData *)dataUsingEncoding:(NSStringEncoding)encoding;
- (NSUInteger)lengthOfBytesUsingEncoding:(NSStringEncoding)encoding;
- (NSArray<NSString *> *)componentsSeparatedByString:(NSString *)separator;
- (nullable instancetype)initWithData:(NSData *)data encoding:(NSStringEncoding)encoding;
- (nullable instancetype)initWithBytes:(const void *)bytes length:(NSUInteger)length encoding:(NSStringEncoding)encoding;
+ (nullable instancetype)stringWithUTF8String:(const char *)text;
+ (instancetype)stringWithFormat:(NSString *)format, ... NS_FORMAT_FUNCTION(1, 2);
@end

@interface NSSimpleCString : NSString {
  char *bytes;
  int numBytes;
}
@end

@interface NSConstantString : NSSimpleCString
@end

NS_ASSUME_NONNULL_END
