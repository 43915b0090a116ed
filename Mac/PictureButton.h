// What the buttons that are drawn with images share.
#pragma once

#import <Cocoa/Cocoa.h>

#include "RuntimeName.h"

@class FocusRing;

/// A button whose subviews are its picture. A click on them is a click on the button; by the keyboard it is pressed as
/// by the mouse, and a ring above the picture shows the focus. [main-thread]
ORV_RUNTIME_NAME("OrvPictureButton")
@interface PictureButton : NSButton {
  FocusRing *focusRing;  // owned as a subview
  BOOL highlighted;
}

/// The pressed state, which the kind of button shows.
@property(assign, getter=isHighlighted) BOOL highlighted;

/// Adds the hidden focus ring above the subviews that are there.
- (void)addFocusRing;

@end
