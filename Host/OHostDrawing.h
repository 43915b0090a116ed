// The colours and the shapes that the controls of OHostTheme share.
#pragma once

#import <AppKit/AppKit.h>

/// Colours as red, green and blue, one byte each. The blues and greys are those of the plug-in's images.
enum OHostHue : unsigned {
  OHostBlue = 0x2563c9,
  OHostDarkBlue = 0x1d4fa3,
  OHostSelection = 0xb5cef4,
  OHostPaleBlue = 0x8fb1ea,
  OHostWhite = 0xffffff,
  OHostBackground = 0xeef0f3,
  OHostPressed = 0xdde2e9,
  OHostTrack = 0xe3e6ea,
  OHostHairline = 0xd5dae1,
  OHostBorder = 0x8a94a2,
  OHostKnob = 0xa9b1bc,
  OHostFaint = 0x8a929d,
  OHostText = 0x20252d,
};

/// The corner radius of buttons, pop-up buttons and fields, in points.
extern const CGFloat OHostCornerRadius;

NSColor *OHostColor(OHostHue hue);

/// Fills the rounded rectangle and draws a border of one point on the inside of its edge. frame is in whole points.
void OHostDrawRounded(NSRect frame, CGFloat radius, OHostHue fill, OHostHue border);

/// Fills a rounded rectangle without a border.
void OHostFillRounded(NSRect frame, CGFloat radius, OHostHue fill);

/// Draws the ring that shows where the keyboard's input goes, two points wide, on the inside of the frame's edge.
void OHostDrawFocusRing(NSRect frame, CGFloat radius);

/// Strokes the corners in their order as a line with round ends.
void OHostStrokeLine(const NSPoint *corners, int count, CGFloat width, OHostHue hue);
