// The bezel of the windows' main buttons.
#pragma once

#import <Cocoa/Cocoa.h>

#include "RuntimeName.h"

/// Draws a button on the big blue background, so that its white title can be read, pressed or not. Set as the class of
/// a button's cell in an interface file. [main-thread]
ORV_RUNTIME_NAME("OrvSlicedButtonCell")
@interface SlicedButtonCell : NSButtonCell
@end
