#import "PlainLabel.h"

NSTextField *PlainLabel(NSRect frame) {
  NSTextField *label = [[[NSTextField alloc] initWithFrame:frame] autorelease];
  [label setEditable:NO];
  [label setSelectable:NO];
  [label setDrawsBackground:NO];
  [label setBackgroundColor:[NSColor clearColor]];
  [label setBordered:NO];
  [label setBezeled:NO];
  return label;
}

void SetLabelText(NSTextField *label, NSString *text, CGFloat above) {
  [label setStringValue:text];
  NSMutableParagraphStyle *style = [[[NSMutableParagraphStyle alloc] init] autorelease];
  [style setAlignment:[label alignment]];
  [style setLineBreakMode:[[label cell] lineBreakMode]];
  [style setMinimumLineHeight:[[label attributedStringValue] size].height + above];
  NSMutableAttributedString *shown = [[[label attributedStringValue] mutableCopy] autorelease];
  [shown addAttribute:NSParagraphStyleAttributeName value:style range:NSMakeRange(0, [shown length])];
  [label setAttributedStringValue:shown];
}
