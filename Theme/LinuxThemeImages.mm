#import "LinuxThemeImages.h"

#import "LinuxThemeDrawing.h"

namespace {

// Points.
const CGFloat kBoxSize = 14;
const CGFloat kTitleGap = 4;  // between a check box and its title
const NSSize kArrowsSize = {13, 14};

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
  LinuxThemeDrawRounded(NSMakeRect(0, 0, kBoxSize, kBoxSize), 2, LinuxThemeWhite, LinuxThemeBorder);
}

void DrawTickedBox() {
  LinuxThemeDrawRounded(NSMakeRect(0, 0, kBoxSize, kBoxSize), 2, LinuxThemeBlue, LinuxThemeBlue);
  StrokeLine({3.5, 7.5}, {6, 4.5}, {10.5, 10}, LinuxThemeWhite);
}

void DrawArrows() {
  StrokeLine({2, 9}, {5, 12}, {8, 9}, LinuxThemeBlue);
  StrokeLine({2, 5}, {5, 2}, {8, 5}, LinuxThemeBlue);
}

void Register(NSString *name, NSSize size, void (*draw)()) {
  NSImage *image = [[NSImage alloc] initWithSize:size];  // kept by its name
  [image lockFocus];
  draw();
  [image unlockFocus];
  // AppKit knows some of its images by a second name, under which it looks first.
  NSImage *stock = [NSImage imageNamed:name];
  NSString *known_name = [[[stock name] copy] autorelease];
  [stock setName:nil];
  [image setName:known_name ? known_name : name];
}

}  // namespace

void LinuxThemeRegisterImages() {
  const NSSize box = NSMakeSize(kBoxSize + kTitleGap, kBoxSize);
  Register(@"NSSwitch", box, DrawEmptyBox);
  Register(@"NSHighlightedSwitch", box, DrawTickedBox);
  Register(@"common_Nibble", kArrowsSize, DrawArrows);
}
