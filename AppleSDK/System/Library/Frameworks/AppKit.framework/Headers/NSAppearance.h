// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <AppKit/AppKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString *NSAppearanceName;

API_AVAILABLE(macos(10.9))
@interface NSAppearance : NSObject <NSSecureCoding>
+ (nullable NSAppearance *)appearanceNamed:(NSAppearanceName)name;
@end

extern "C" {
extern NSAppearanceName const NSAppearanceNameAqua API_AVAILABLE(macos(10.9));
}

@protocol NSAppearanceCustomization <NSObject>
@property (nullable, strong) NSAppearance *appearance API_AVAILABLE(macos(10.9));
@end

NS_ASSUME_NONNULL_END
