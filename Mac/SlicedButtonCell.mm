#import "SlicedButtonCell.h"

#import "RoundedView.h"

// Points. The images have an edge below the button's face; the title stands in the middle of the face.
static const CGFloat kTitleLift = 1;

@implementation SlicedButtonCell

- (void)drawBezelWithFrame:(NSRect)frame inView:(NSView *)controlView {
  int type = [self isHighlighted] ? RoundedViewTypeButtonBlueBigHighlighted : RoundedViewTypeButtonBlueBig;
  DrawRoundedBackground(type, frame, [controlView isFlipped]);
}

- (NSRect)drawTitle:(NSAttributedString *)title withFrame:(NSRect)frame inView:(NSView *)controlView {
  frame.origin.y += [controlView isFlipped] ? -kTitleLift : kTitleLift;
  return [super drawTitle:title withFrame:frame inView:controlView];
}

@end
