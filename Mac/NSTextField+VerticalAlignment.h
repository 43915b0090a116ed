// Centring a text field's single line.
#pragma once

#import <Cocoa/Cocoa.h>

/// The rectangle moved vertically so that the field's text stands in its middle. Points. [main-thread]
///
/// A category is the whole process's: when the host or another plug-in adds a method of the same name, all callers get
/// the one that was loaded last. The plug-in itself calls the one with the prefix, which nobody else has.
@interface NSTextField (VerticalAlignment)

- (NSRect)orv_titleRectForBounds:(NSRect)bounds;
- (NSRect)titleRectForBounds:(NSRect)bounds;

@end
