// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSObject.h>

API_AVAILABLE(macos(10.5))
@interface CATransaction : NSObject
+ (void)flush;
@end
