// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSObject.h>
#import <Foundation/NSString.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString *NSExceptionName;

extern "C" {
extern NSExceptionName const NSRangeException;
extern NSExceptionName const NSInvalidArgumentException;
}

__attribute__((__objc_exception__))
@interface NSException : NSObject <NSCopying, NSSecureCoding>
@property (readonly, copy) NSExceptionName name;
@property (nullable, readonly, copy) NSString *reason;
@end

@interface NSException (NSExceptionRaisingConveniences)
+ (void)raise:(NSExceptionName)name format:(NSString *)format, ... NS_FORMAT_FUNCTION(2, 3);
@end

@interface NSAssertionHandler : NSObject
@property (class, readonly, strong) NSAssertionHandler *currentHandler;
- (void)handleFailureInMethod:(SEL)method object:(id)object file:(NSString *)file lineNumber:(NSInteger)line description:(nullable NSString *)format, ... NS_FORMAT_FUNCTION(5, 6);
@end

#define NSAssert(condition, desc, ...) do { if (__builtin_expect(!(condition), 0)) { NSString *file_ = [NSString stringWithUTF8String:__FILE__]; [[NSAssertionHandler currentHandler] handleFailureInMethod:_cmd object:self file:file_ ? file_ : @"<Unknown File>" lineNumber:__LINE__ description:(desc), ##__VA_ARGS__]; } } while (0)
#define NSParameterAssert(condition) NSAssert((condition), @"Invalid parameter not satisfying: %@", @#condition)

NS_ASSUME_NONNULL_END
