#import "OHostDrawing.h"

const CGFloat OHostCornerRadius = 5;

namespace {

const CGFloat kRingWidth = 2;

double Part(OHostHue hue, int shift) {
  return ((hue >> shift) & 0xff) / 255.0;
}

NSBezierPath *RoundedPath(NSRect frame, CGFloat inset, CGFloat radius) {
  const CGFloat rest = radius > inset ? radius - inset : 0;
  return [NSBezierPath bezierPathWithRoundedRect:NSInsetRect(frame, inset, inset) xRadius:rest yRadius:rest];
}

}  // namespace

NSColor *OHostColor(OHostHue hue) {
  return [NSColor colorWithCalibratedRed:Part(hue, 16) green:Part(hue, 8) blue:Part(hue, 0) alpha:1];
}

void OHostDrawRounded(NSRect frame, CGFloat radius, OHostHue fill, OHostHue border) {
  // The line lies in the middle of its row of pixels.
  NSBezierPath *path = RoundedPath(frame, 0.5, radius);
  [path setLineWidth:1];
  [OHostColor(fill) set];
  [path fill];
  [OHostColor(border) set];
  [path stroke];
}

void OHostFillRounded(NSRect frame, CGFloat radius, OHostHue fill) {
  [OHostColor(fill) set];
  [RoundedPath(frame, 0, radius) fill];
}

void OHostDrawFocusRing(NSRect frame, CGFloat radius) {
  NSBezierPath *path = RoundedPath(frame, kRingWidth / 2, radius);
  [path setLineWidth:kRingWidth];
  [OHostColor(OHostPaleBlue) set];
  [path stroke];
}

void OHostStrokeLine(const NSPoint *corners, int count, CGFloat width, OHostHue hue) {
  NSBezierPath *path = [NSBezierPath bezierPath];
  [path moveToPoint:corners[0]];
  for (int i = 1; i < count; ++i) [path lineToPoint:corners[i]];
  [path setLineWidth:width];
  [path setLineCapStyle:NSRoundLineCapStyle];
  [path setLineJoinStyle:NSRoundLineJoinStyle];
  [OHostColor(hue) set];
  [path stroke];
}
