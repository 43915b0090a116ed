// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSObject.h>

@interface NSNotification : NSObject <NSCopying, NSCoding>
@end
