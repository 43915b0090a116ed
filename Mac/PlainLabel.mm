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
