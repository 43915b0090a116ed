// The labels inside the custom controls.
#pragma once

#import <Cocoa/Cocoa.h>

/// An autoreleased text field that only shows text: neither editable nor selectable, without background and border.
/// [main-thread]
NSTextField *PlainLabel(NSRect frame);
