#include <cmath>

#import "NSTextField+VerticalAlignment.h"

// Points that the text stands below the middle of its line.
static const CGFloat kTextLift = 3.5;

@implementation NSTextField (VerticalAlignment)

- (NSRect)orv_titleRectForBounds:(NSRect)bounds {
  CGFloat height = [[self attributedStringValue] size].height;
  bounds.origin.y = std::floor((NSHeight(bounds) - height) / 2.0 - kTextLift);
  return bounds;
}

- (NSRect)titleRectForBounds:(NSRect)bounds {
  return [self orv_titleRectForBounds:bounds];
}

@end
