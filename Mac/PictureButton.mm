#import "PictureButton.h"

#import "FocusRing.h"

@implementation PictureButton

- (BOOL)isHighlighted {
  return highlighted;
}

- (void)setHighlighted:(BOOL)flag {
  highlighted = flag;
}

- (void)addFocusRing {
  focusRing = [FocusRing ringInControl:self];
}

- (NSView *)hitTest:(NSPoint)point {
  return [super hitTest:point] ? self : nil;
}

- (BOOL)becomeFirstResponder {
  const BOOL becomes = [super becomeFirstResponder];
  [focusRing setShown:becomes];
  return becomes;
}

- (BOOL)resignFirstResponder {
  const BOOL resigns = [super resignFirstResponder];
  [focusRing setShown:!resigns];
  return resigns;
}

// A click by the keyboard.
- (void)performClick:(id)sender {
  [self setHighlighted:YES];
  [self display];
  if ([self isEnabled]) [super performClick:sender];
  [self setHighlighted:NO];
}

@end
