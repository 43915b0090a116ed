#import "FocusRing.h"

// Points. The lines follow the round corners of the background.
static const CGFloat kLineWidth = 2;
static const CGFloat kRadius = 4;

// A line on the inside of the edge.
static void DrawLine(NSRect edge, CGFloat radius, NSColor *color) {
  NSRect middle = NSInsetRect(edge, kLineWidth / 2, kLineWidth / 2);
  NSBezierPath *path = [NSBezierPath bezierPathWithRoundedRect:middle xRadius:radius yRadius:radius];
  [path setLineWidth:kLineWidth];
  [color set];
  [path stroke];
}

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
  DrawLine([self bounds], kRadius, [NSColor keyboardFocusIndicatorColor]);
  DrawLine(NSInsetRect([self bounds], kLineWidth, kLineWidth), kRadius - 1, [NSColor whiteColor]);
}

@end
