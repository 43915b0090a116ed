#import "ButtonTitle.h"

void SetButtonTitleColor(NSButton *button, NSColor *color) {
  NSMutableAttributedString *title = [[[button attributedTitle] mutableCopy] autorelease];
  [title addAttribute:NSForegroundColorAttributeName value:color range:NSMakeRange(0, [title length])];
  [button setAttributedTitle:title];
}
