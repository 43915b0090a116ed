// One tag's chip.
#pragma once

#import "PictureButton.h"
#include "RuntimeName.h"

@class RoundedView;

/// Shows a tag's text with a delete mark. A click anywhere on it sends its action. It sizes itself to its text, with a
/// text of 260 points at most. [main-thread]
ORV_RUNTIME_NAME("OrvTagButton")
@interface TagButton : PictureButton {
  NSString *titleString;
  RoundedView *backgroundView;
  NSTextField *titleLabel;
  NSImageView *deleteImageView;
}

/// The tag's text. Setting it lays out again.
@property(nonatomic, readonly) NSString *titleString;
@property(nonatomic, retain) RoundedView *backgroundView;
@property(nonatomic, retain) NSTextField *titleLabel;
@property(nonatomic, retain) NSImageView *deleteImageView;

- (void)initializeView;
- (void)setTitleString:(NSString *)string;

/// Computes the frames of the chip and of what it holds from the text.
- (void)updateFrames;

@end
