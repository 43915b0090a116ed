// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/Foundation.h>

@class NSButton, NSColor, NSEvent, NSFont, NSGraphicsContext, NSImage, NSTextView, NSView, NSWindow;
