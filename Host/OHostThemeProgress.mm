// Progress: a round blue bar in a grey track, a stretch of blue that moves when nobody knows how long, and a ring.
#import "OHostTheme.h"

#import "OHostDrawing.h"

namespace {

const CGFloat kBarHeight = 8;
const int kStepsAround = 24;  // of the animation's counter, once through the track or around the ring

void DrawBar(NSProgressIndicator *progress, NSRect bounds, int count, double value) {
  const CGFloat height = MIN(kBarHeight, NSHeight(bounds));
  const NSRect track = NSMakeRect(NSMinX(bounds), floor(NSMidY(bounds) - height / 2), NSWidth(bounds), height);
  OHostDrawRounded(track, height / 2, OHostTrack, OHostHairline);
  if ([progress isIndeterminate]) {
    const CGFloat width = NSWidth(track) / 4;
    const CGFloat phase = static_cast<CGFloat>(count % kStepsAround) / (kStepsAround - 1);
    OHostFillRounded(NSMakeRect(NSMinX(track) + phase * (NSWidth(track) - width), NSMinY(track), width, height),
                     height / 2, OHostBlue);
  } else if (value > 0) {
    // Never narrower than it is high: a thinner piece would not be round.
    const CGFloat width = MAX(height, NSWidth(track) * MIN(value, 1));
    OHostFillRounded(NSMakeRect(NSMinX(track), NSMinY(track), width, height), height / 2, OHostBlue);
  }
}

void DrawSpinner(NSRect bounds, int count) {
  const NSPoint centre = NSMakePoint(NSMidX(bounds), NSMidY(bounds));
  const CGFloat width = MAX(2, floor(MIN(NSWidth(bounds), NSHeight(bounds)) / 8));
  const CGFloat radius = (MIN(NSWidth(bounds), NSHeight(bounds)) - width) / 2;
  NSBezierPath *ring = [NSBezierPath bezierPath];
  [ring appendBezierPathWithArcWithCenter:centre radius:radius startAngle:0 endAngle:360];
  [ring setLineWidth:width];
  [OHostColor(OHostTrack) set];
  [ring stroke];
  const CGFloat angle = -360.0 * (count % kStepsAround) / kStepsAround;
  NSBezierPath *arc = [NSBezierPath bezierPath];
  [arc appendBezierPathWithArcWithCenter:centre radius:radius startAngle:angle endAngle:angle + 100];
  [arc setLineWidth:width];
  [arc setLineCapStyle:NSRoundLineCapStyle];
  [OHostColor(OHostBlue) set];
  [arc stroke];
}

}  // namespace

@implementation OHostTheme (Progress)

- (void)drawProgressIndicator:(NSProgressIndicator *)progress
                   withBounds:(NSRect)bounds
                     withClip:(NSRect)rect
                      atCount:(int)count
                     forValue:(double)value {
  (void)rect;
  if ([progress style] == NSProgressIndicatorSpinningStyle) {
    DrawSpinner(bounds, count);
  } else {
    DrawBar(progress, bounds, count, value);
  }
}

@end
