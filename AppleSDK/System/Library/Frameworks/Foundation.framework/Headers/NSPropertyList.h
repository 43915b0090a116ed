// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSObject.h>

@class NSData, NSError;

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(NSUInteger, NSPropertyListMutabilityOptions) { NSPropertyListImmutable = 0 };
typedef NS_ENUM(NSUInteger, NSPropertyListFormat) { NSPropertyListXMLFormat_v1_0 = 100, NSPropertyListBinaryFormat_v1_0 = 200 };
typedef NSPropertyListMutabilityOptions NSPropertyListReadOptions;

@interface NSPropertyListSerialization : NSObject
+ (nullable id)propertyListWithData:(NSData *)data options:(NSPropertyListReadOptions)options format:(nullable NSPropertyListFormat *)format error:(NSError *_Nullable *_Nullable)error API_AVAILABLE(macos(10.6));
@end

NS_ASSUME_NONNULL_END
