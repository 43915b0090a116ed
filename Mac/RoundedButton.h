// A button drawn with a rounded background and a centred label. Part of the set of controls; no window has one.
#pragma once

#import "PictureButton.h"
#include "RuntimeName.h"

@class RoundedView;

/// The styles. The numbers are fixed.
enum {
  RoundedButtonTypeBlueSmall = 0,
  RoundedButtonTypeBlueBig = 1,
  RoundedButtonTypeYellow = 2,
  RoundedButtonTypeGraySmall = 3,
  RoundedButtonTypeGrayBig = 4
};

/// [main-thread]
ORV_RUNTIME_NAME("OrvRoundedButton")
@interface RoundedButton : PictureButton {
  int type;
  NSString *titleString;
  NSColor *titleColor;
  BOOL enabled;
  RoundedView *backgroundView;
  NSTextField *titleLabel;
}

/// The style. Other numbers change nothing of the look.
@property(nonatomic, assign) int type;
@property(nonatomic, copy) NSString *titleString;
@property(nonatomic, retain) NSColor *titleColor;

/// A disabled button still shows its pressed state, but sends no action.
@property(assign, getter=isEnabled) BOOL enabled;
@property(nonatomic, retain) RoundedView *backgroundView;
@property(nonatomic, retain) NSTextField *titleLabel;

- (void)initializeView;

/// Gives background and label the style's normal look.
- (void)updateView;

@end
