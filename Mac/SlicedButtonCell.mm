#import "SlicedButtonCell.h"

#import "RoundedView.h"

@implementation SlicedButtonCell

- (void)drawBezelWithFrame:(NSRect)frame inView:(NSView *)controlView {
  int type = [self isHighlighted] ? RoundedViewTypeButtonBlueBigHighlighted : RoundedViewTypeButtonBlueBig;
  DrawRoundedBackground(type, frame, [controlView isFlipped]);
}

@end
