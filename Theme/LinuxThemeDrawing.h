// The colours and shapes of the theme's controls.
#pragma once

#import <AppKit/AppKit.h>

/// Colours as red, green and blue, one byte each. The blues and greys are those of the plug-in's images.
enum LinuxThemeHue : unsigned {
  LinuxThemeBlue = 0x2563c9,
  LinuxThemeSelection = 0xb5cef4,
  LinuxThemeWhite = 0xffffff,
  LinuxThemeBackground = 0xeef0f3,
  LinuxThemePressed = 0xdde2e9,
  LinuxThemeBorder = 0x7e8896,
  LinuxThemeFaint = 0x8a929d,
  LinuxThemeText = 0x20252d,
};

/// The room that AppKit leaves around the bezel, within the frame of a pop-up button, in points.
const CGFloat LinuxThemePopUpInset = 3;

NSColor *LinuxThemeColor(LinuxThemeHue hue);

/// Fills the rounded rectangle, and draws a border of that width in points on the inside of its edge.
void LinuxThemeDrawRounded(NSRect frame, CGFloat radius, LinuxThemeHue fill, LinuxThemeHue border, CGFloat width = 1);

/// Draws a line of a focus ring, two points wide, on the inside of the edge.
void LinuxThemeDrawRing(NSRect frame, CGFloat radius, LinuxThemeHue hue);
