#import <AppKit/AppKit.h>

/// The room that a pop-up button's chevrons take at its right, in points.
extern const CGFloat OHostPopUpArrowRoom;

/// The room beside a pop-up button's bezel within its frame, in points.
extern const CGFloat OHostPopUpInset;

/// Whether the cell is that of its window's default button, which the theme draws in blue with a white title. Not so a
/// button that cannot be pressed, nor one with a cell class of its own, which draws its own background.
BOOL OHostIsBlueButton(NSCell *cell, NSView *view);
