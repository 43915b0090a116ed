// The labels inside the custom controls.
#pragma once

#import <Cocoa/Cocoa.h>

/// An autoreleased text field that only shows text: neither editable nor selectable, without background and border.
/// [main-thread]
NSTextField *PlainLabel(NSRect frame);

/// Shows the text in the label's font, colour, alignment and line break mode, as the last part of a line that has so
/// many points more above: a label whose place is laid down has its text lower within it. [main-thread]
void SetLabelText(NSTextField *label, NSString *text, CGFloat above);
