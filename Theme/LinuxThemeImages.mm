#import "LinuxThemeImages.h"

#import "LinuxThemeDrawing.h"

namespace {

// Points.
const CGFloat kBoxSize = 14;
const CGFloat kBoxMargin = 2;  // at the left of a check box, where its focus ring goes
const CGFloat kTitleGap = 4;   // between a check box and its title
const NSSize kArrowsSize = {13, 14};
const CGFloat kIconSize = 64;

void StrokeLine(NSPoint from, NSPoint corner, NSPoint to, LinuxThemeHue hue) {
  NSBezierPath *path = [NSBezierPath bezierPath];
  [path moveToPoint:from];
  [path lineToPoint:corner];
  [path lineToPoint:to];
  [path setLineWidth:1.5];
  [LinuxThemeColor(hue) set];
  [path stroke];
}

void DrawEmptyBox() {
  LinuxThemeDrawRounded(NSMakeRect(kBoxMargin, 0, kBoxSize, kBoxSize), 2, LinuxThemeWhite, LinuxThemeBorder);
}

void DrawTickedBox() {
  LinuxThemeDrawRounded(NSMakeRect(kBoxMargin, 0, kBoxSize, kBoxSize), 2, LinuxThemeBlue, LinuxThemeBlue);
  StrokeLine({5.5, 7.5}, {8, 4.5}, {12.5, 10}, LinuxThemeWhite);
}

void DrawArrows() {
  StrokeLine({2, 9}, {5, 12}, {8, 9}, LinuxThemeBlue);
  StrokeLine({2, 5}, {5, 2}, {8, 5}, LinuxThemeBlue);
}

// A screen, and on it the sign to play.
void DrawIcon() {
  LinuxThemeDrawRounded(NSMakeRect(2, 8, 60, 48), 6, LinuxThemeText, LinuxThemeBorder, 2);
  NSBezierPath *sign = [NSBezierPath bezierPath];
  [sign moveToPoint:{25, 20}];
  [sign lineToPoint:{25, 44}];
  [sign lineToPoint:{45, 32}];
  [LinuxThemeColor(LinuxThemeWhite) set];
  [sign fill];
}

// The caller owns the image. Its picture is a bitmap: what is drawn into an image alone is lost in the image's copies.
NSImage *Draw(NSSize size, void (*draw)()) {
  NSImage *canvas = [[[NSImage alloc] initWithSize:size] autorelease];
  [canvas lockFocus];
  draw();
  const NSRect all = NSMakeRect(0, 0, size.width, size.height);
  NSBitmapImageRep *picture = [[[NSBitmapImageRep alloc] initWithFocusedViewRect:all] autorelease];
  [canvas unlockFocus];
  NSImage *image = [[NSImage alloc] initWithSize:size];
  [image addRepresentation:picture];
  return image;
}

void Register(NSString *name, NSSize size, void (*draw)()) {
  NSImage *image = Draw(size, draw);  // kept by its name
  // AppKit knows some of its images by a second name, under which it looks first.
  NSImage *stock = [NSImage imageNamed:name];
  NSString *known_name = [[[stock name] copy] autorelease];
  [stock setName:nil];
  [image setName:known_name ? known_name : name];
}

}  // namespace

void LinuxThemeRegisterImages() {
  const NSSize box = NSMakeSize(kBoxMargin + kBoxSize + kTitleGap, kBoxSize);
  Register(@"NSSwitch", box, DrawEmptyBox);
  Register(@"NSHighlightedSwitch", box, DrawTickedBox);
  Register(@"common_Nibble", kArrowsSize, DrawArrows);
  [NSApp setApplicationIconImage:[Draw(NSMakeSize(kIconSize, kIconSize), DrawIcon) autorelease]];
}
