#import "LinuxThemeDrawing.h"

namespace {

// A rounded rectangle whose line of that width runs along the inside of the edge.
NSBezierPath *Outline(NSRect frame, CGFloat radius, CGFloat width) {
  NSBezierPath *path = [NSBezierPath bezierPathWithRoundedRect:NSInsetRect(frame, width / 2, width / 2)
                                                       xRadius:radius
                                                       yRadius:radius];
  [path setLineWidth:width];
  return path;
}

}  // namespace

NSColor *LinuxThemeColor(LinuxThemeHue hue) {
  const auto part = [hue](int shift) { return ((hue >> shift) & 0xff) / 255.0; };
  return [NSColor colorWithCalibratedRed:part(16) green:part(8) blue:part(0) alpha:1];
}

void LinuxThemeDrawRounded(NSRect frame, CGFloat radius, LinuxThemeHue fill, LinuxThemeHue border, CGFloat width) {
  NSBezierPath *path = Outline(frame, radius, width);
  [LinuxThemeColor(fill) set];
  [path fill];
  [LinuxThemeColor(border) set];
  [path stroke];
}

void LinuxThemeDrawRing(NSRect frame, CGFloat radius, LinuxThemeHue hue) {
  [LinuxThemeColor(hue) set];
  [Outline(frame, radius, 2) stroke];
}
