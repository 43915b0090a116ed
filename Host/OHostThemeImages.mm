#import "OHostThemeImages.h"

#import "OHostDrawing.h"

namespace {

// Points. Around a check box there is room for the focus ring, and at its right for a gap before the title.
const CGFloat kRingRoom = 2;
const CGFloat kBoxSize = 14;
const CGFloat kTitleGap = 2;

const NSPoint kTick[] = {{3.5, 7.2}, {6, 4.5}, {10.5, 10}};

void DrawBox(OHostHue fill, OHostHue border) {
  OHostDrawRounded(NSMakeRect(kRingRoom, kRingRoom, kBoxSize, kBoxSize), 3, fill, border);
}

void DrawTick(CGFloat offset, CGFloat width, OHostHue hue) {
  NSPoint tick[3];
  for (int i = 0; i < 3; ++i) tick[i] = NSMakePoint(kTick[i].x + offset, kTick[i].y + offset);
  OHostStrokeLine(tick, 3, width, hue);
}

}  // namespace

const CGFloat OHostCheckBoxSize = kBoxSize + 2 * kRingRoom;

// Draws the images: an image's representation calls its method whenever it is needed.
@interface OHostImageArtist : NSObject
@end

@implementation OHostImageArtist

+ (void)drawEmptyBox:(NSCustomImageRep *)representation {
  (void)representation;
  DrawBox(OHostWhite, OHostFaint);
}

+ (void)drawTickedBox:(NSCustomImageRep *)representation {
  (void)representation;
  DrawBox(OHostBlue, OHostDarkBlue);
  DrawTick(kRingRoom, 2, OHostWhite);
}

+ (void)drawTick:(NSCustomImageRep *)representation {
  (void)representation;
  DrawTick(0, 1.5, OHostText);
}

+ (void)drawArrow:(NSCustomImageRep *)representation {
  (void)representation;
  const NSPoint arrow[] = {{4, 2}, {8, 6}, {4, 10}};
  OHostStrokeLine(arrow, 3, 1.5, OHostKnob);
}

+ (void)drawNothing:(NSCustomImageRep *)representation {
  (void)representation;
}

@end

namespace {

void Register(NSString *name, NSSize size, SEL draw) {
  NSCustomImageRep *representation = [[NSCustomImageRep alloc] initWithDrawSelector:draw
                                                                           delegate:[OHostImageArtist class]];
  [representation setSize:size];
  NSImage *image = [[NSImage alloc] initWithSize:size];  // kept by its name
  [image addRepresentation:representation];
  [representation release];
  // AppKit knows some of its images by a second name, under which it looks first.
  NSImage *stock = [NSImage imageNamed:name];
  NSString *known_name = [[[stock name] copy] autorelease];
  [stock setName:nil];
  [image setName:known_name ? known_name : name];
}

}  // namespace

void OHostRegisterThemeImages() {
  const NSSize box = NSMakeSize(OHostCheckBoxSize + kTitleGap, OHostCheckBoxSize);
  Register(@"NSSwitch", box, @selector(drawEmptyBox:));
  Register(@"NSHighlightedSwitch", box, @selector(drawTickedBox:));
  Register(@"common_2DCheckMark", NSMakeSize(kBoxSize, kBoxSize), @selector(drawTick:));
  Register(@"common_3DArrowRight", NSMakeSize(12, 12), @selector(drawArrow:));
  // Pop-up buttons have chevrons instead, which the theme draws.
  Register(@"common_Nibble", NSMakeSize(1, 1), @selector(drawNothing:));
  Register(@"common_3DArrowDown", NSMakeSize(1, 1), @selector(drawNothing:));
}
