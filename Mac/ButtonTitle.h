// Colouring a button's title.
#pragma once

#import <Cocoa/Cocoa.h>

/// Gives the button's title that colour over its whole length and keeps its other attributes. [main-thread]
void SetButtonTitleColor(NSButton* button, NSColor* color);
