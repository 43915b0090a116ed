// The keyboard focus of the controls that are drawn with images.
#pragma once

#import <Cocoa/Cocoa.h>

#include "RuntimeName.h"

/// Inside the bounds of the control that holds it a line in the system's colour for the focus, and within that a white
/// one, for the control may be as dark. Shown while the control has the keyboard. The system's own ring would lie below
/// the control's images. Takes no clicks. [main-thread]
ORV_RUNTIME_NAME("OrvFocusRing")
@interface FocusRing : NSView

/// A hidden ring above everything else in the control, which owns it.
+ (FocusRing *)ringInControl:(NSControl *)control;

/// Shows or hides the ring in the place of the system's. The control calls it after it has got or lost the keyboard.
- (void)setShown:(BOOL)shown;

@end
