// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <CoreGraphics/CoreGraphics.h>
#import <Foundation/NSObjCRuntime.h>

typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;

extern "C" {
extern const NSRect NSZeroRect;
extern const NSPoint NSZeroPoint;
BOOL NSEqualRects(NSRect left, NSRect right);
BOOL NSEqualSizes(NSSize left, NSSize right);
NSRect NSInsetRect(NSRect rect, CGFloat dX, CGFloat dY);
}

static inline NSPoint NSMakePoint(CGFloat x, CGFloat y) {
  NSPoint point = {x, y};
  return point;
}

static inline NSSize NSMakeSize(CGFloat w, CGFloat h) {
  NSSize size = {w, h};
  return size;
}

static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat w, CGFloat h) {
  NSRect rect = {{x, y}, {w, h}};
  return rect;
}

static inline CGFloat NSMaxX(NSRect rect) { return rect.origin.x + rect.size.width; }
static inline CGFloat NSMaxY(NSRect rect) { return rect.origin.y + rect.size.height; }
static inline CGFloat NSMinX(NSRect rect) { return rect.origin.x; }
static inline CGFloat NSMinY(NSRect rect) { return rect.origin.y; }
static inline CGFloat NSWidth(NSRect rect) { return rect.size.width; }
static inline CGFloat NSHeight(NSRect rect) { return rect.size.height; }
