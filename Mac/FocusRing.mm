#import "FocusRing.h"

// Points, from the control's edge to the line's middle. The line follows the round corners of the background.
static const CGFloat kInset = 2.5;
static const CGFloat kLineWidth = 1.5;
static const CGFloat kRadius = 4;

@implementation FocusRing

+ (FocusRing *)ringInControl:(NSControl *)control {
  FocusRing *ring = [[[FocusRing alloc] initWithFrame:[control bounds]] autorelease];
  [ring setAutoresizingMask:NSViewWidthSizable | NSViewHeightSizable];
  [ring setHidden:YES];
  [control setFocusRingType:NSFocusRingTypeNone];
  [control addSubview:ring];
  return ring;
}

- (void)setShown:(BOOL)shown {
  [self setHidden:!shown];
  [[static_cast<NSControl *>([self superview]) cell] setShowsFirstResponder:NO];
}

- (NSView *)hitTest:(NSPoint)point {
  return nil;
}

- (void)drawRect:(NSRect)dirtyRect {
  NSRect line = NSInsetRect([self bounds], kInset, kInset);
  NSBezierPath *path = [NSBezierPath bezierPathWithRoundedRect:line xRadius:kRadius yRadius:kRadius];
  [path setLineWidth:kLineWidth];
  [[NSColor whiteColor] set];
  [path stroke];
}

@end
