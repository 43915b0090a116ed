// What a text looks like.
#pragma once

#import <Cocoa/Cocoa.h>

/// The text in a font of 16 points, autoreleased.
inline NSAttributedString *TextInFont(NSString *text, NSString *font) {
  NSDictionary *attributes = @{NSFontAttributeName : [NSFont fontWithName:font size:16]};
  return [[[NSAttributedString alloc] initWithString:text attributes:attributes] autorelease];
}

/// The text in black on white, drawn into the rectangle of a picture of that size, autoreleased. Main thread.
inline NSBitmapImageRep *DrawnText(NSAttributedString *text, NSSize size, NSRect rectangle) {
  const NSRect all = NSMakeRect(0, 0, size.width, size.height);
  NSImage *canvas = [[[NSImage alloc] initWithSize:size] autorelease];
  [canvas lockFocus];
  [[NSColor whiteColor] set];
  NSRectFill(all);
  [text drawInRect:rectangle];
  NSBitmapImageRep *bitmap = [[[NSBitmapImageRep alloc] initWithFocusedViewRect:all] autorelease];
  [canvas unlockFocus];
  return bitmap;
}

/// How dark the pixel is, from 0 to 255.
inline int Darkness(NSBitmapImageRep *bitmap, NSInteger x, NSInteger y) {
  NSUInteger samples[5] = {};
  [bitmap getPixel:samples atX:x y:y];
  return 255 - static_cast<int>(samples[0]);
}
