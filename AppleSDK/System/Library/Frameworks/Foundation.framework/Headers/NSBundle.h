// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSBundle : NSObject
@property (class, readonly, strong) NSBundle *mainBundle;
+ (nullable NSBundle *)bundleWithIdentifier:(NSString *)identifier;
+ (nullable instancetype)bundleWithPath:(NSString *)path;
- (nullable instancetype)initWithPath:(NSString *)path NS_DESIGNATED_INITIALIZER;
- (BOOL)load;
@property (nullable, readonly, copy) NSString *executablePath;
- (NSString *)localizedStringForKey:(NSString *)key value:(nullable NSString *)value table:(nullable NSString *)table;
@end

NS_ASSUME_NONNULL_END
