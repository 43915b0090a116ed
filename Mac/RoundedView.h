// The stretchable backgrounds that the custom controls are drawn with.
#pragma once

#import <Cocoa/Cocoa.h>

#include "RuntimeName.h"

/// The backgrounds. The numbers are fixed; note that "uploaded" comes before "converted".
enum {
  RoundedViewTypeTextFieldWhiteSmall = 0,
  RoundedViewTypeTextFieldWhite = 1,
  RoundedViewTypeTextFieldWhiteBig = 2,
  RoundedViewTypeTextFieldGray = 3,
  RoundedViewTypeButtonBlueBig = 4,
  RoundedViewTypeButtonBlueBigHighlighted = 5,
  RoundedViewTypeButtonBlueSmall = 6,
  RoundedViewTypeButtonBlueSmallHighlighted = 7,
  RoundedViewTypeButtonYellow = 8,
  RoundedViewTypeButtonYellowHighlighted = 9,
  RoundedViewTypeButtonGraySmall = 10,
  RoundedViewTypeButtonGraySmallHighlighted = 11,
  RoundedViewTypeButtonGrayBig = 12,
  RoundedViewTypeButtonGrayBigHighlighted = 13,
  RoundedViewTypeComboBoxGray = 14,
  RoundedViewTypeComboBoxGraySmall = 15,
  RoundedViewTypeProgressBarTotal = 16,
  RoundedViewTypeProgressBarUploaded = 17,
  RoundedViewTypeProgressBarConverted = 18
};

/// Draws the background of that type over the rectangle of the focused view. Types that do not exist draw nothing.
/// [main-thread]
void DrawRoundedBackground(int type, NSRect rectangle, BOOL flipped);

/// A view that shows one background. A new view has type 0.
ORV_RUNTIME_NAME("OrvRoundedView")
@interface RoundedView : NSView {
  int type;
}

/// One of the types above; others draw nothing.
@property(nonatomic, assign) int type;

@end
