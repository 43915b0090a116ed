// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSObject.h>

@class NSData, NSError;

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(NSUInteger, NSJSONReadingOptions) { NSJSONReadingMutableContainers = 1UL << 0, NSJSONReadingMutableLeaves = 1UL << 1 };
typedef NS_OPTIONS(NSUInteger, NSJSONWritingOptions) { NSJSONWritingPrettyPrinted = 1UL << 0 };

API_AVAILABLE(macos(10.7))
@interface NSJSONSerialization : NSObject
+ (nullable NSData *)dataWithJSONObject:(id)object options:(NSJSONWritingOptions)options error:(NSError *_Nullable *_Nullable)error;
+ (nullable id)JSONObjectWithData:(NSData *)data options:(NSJSONReadingOptions)options error:(NSError *_Nullable *_Nullable)error;
@end

NS_ASSUME_NONNULL_END
