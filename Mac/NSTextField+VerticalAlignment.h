// Centring a text field's single line.
#pragma once

#import <Cocoa/Cocoa.h>

@interface NSTextField (VerticalAlignment)

/// The rectangle moved vertically so that the field's text stands in its middle. Points. [main-thread]
- (NSRect)titleRectForBounds:(NSRect)bounds;

@end
