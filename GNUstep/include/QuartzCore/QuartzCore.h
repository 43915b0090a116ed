// The part of Core Animation that the plug-in uses.
#pragma once

#import <Foundation/Foundation.h>

/// What is drawn goes to the screen at once here: there are no transactions. Main thread.
@interface CATransaction : NSObject
+ (void)flush;
@end
