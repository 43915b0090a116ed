// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSDate.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSUInteger, NSDateFormatterStyle) { NSDateFormatterNoStyle = 0, NSDateFormatterMediumStyle = 2 };

@interface NSDateFormatter : NSObject
+ (NSString *)localizedStringFromDate:(NSDate *)date dateStyle:(NSDateFormatterStyle)dstyle timeStyle:(NSDateFormatterStyle)tstyle API_AVAILABLE(macos(10.6));
@end

NS_ASSUME_NONNULL_END
