#import "OHostIcon.h"

#include <cairo.h>

#include <cmath>
#include <initializer_list>

#import "OHostDrawing.h"

// AppKit's back end asks for the application's icon before it can draw into images, so this one is drawn by cairo
// alone.

namespace {

// Pixels. Everything is drawn on a square of 64 units, y downwards.
const int kSide = 128;
const double kUnits = 64;
const int kHoles = 5;

void SetColor(cairo_t *cairo, OHostHue hue) {
  cairo_set_source_rgb(cairo, (hue >> 16 & 0xff) / 255.0, (hue >> 8 & 0xff) / 255.0, (hue & 0xff) / 255.0);
}

void AddRounded(cairo_t *cairo, double x, double y, double width, double height, double radius) {
  cairo_new_sub_path(cairo);
  cairo_arc(cairo, x + width - radius, y + radius, radius, -M_PI_2, 0);
  cairo_arc(cairo, x + width - radius, y + height - radius, radius, 0, M_PI_2);
  cairo_arc(cairo, x + radius, y + height - radius, radius, M_PI_2, M_PI);
  cairo_arc(cairo, x + radius, y + radius, radius, M_PI, 3 * M_PI_2);
  cairo_close_path(cairo);
}

void FillHill(cairo_t *cairo, double left, double top_x, double top_y, double right, OHostHue hue) {
  cairo_move_to(cairo, left, kUnits);
  cairo_line_to(cairo, top_x, top_y);
  cairo_line_to(cairo, right, kUnits);
  SetColor(cairo, hue);
  cairo_fill(cairo);
}

void DrawFilm(cairo_t *cairo) {
  AddRounded(cairo, 2, 6, 60, 52, 8);
  SetColor(cairo, OHostText);
  cairo_fill(cairo);
  SetColor(cairo, OHostBackground);
  for (int i = 0; i < kHoles; ++i) {
    for (double y : {9.5, 49.5}) AddRounded(cairo, 7.5 + i * 10.5, y, 6, 5, 1.5);
  }
  cairo_fill(cairo);
}

void DrawPicture(cairo_t *cairo) {
  AddRounded(cairo, 7, 18, 50, 28, 3);
  cairo_clip(cairo);
  SetColor(cairo, OHostSelection);
  cairo_paint(cairo);
  cairo_arc(cairo, 21, 25, 3.5, 0, 2 * M_PI);
  SetColor(cairo, OHostWhite);
  cairo_fill(cairo);
  FillHill(cairo, 12, 42, 27, 72, OHostPaleBlue);
  FillHill(cairo, -14, 22, 32, 58, OHostBlue);
}

// Cairo's pixels are native 32-bit numbers 0xAARRGGBB; AppKit's are bytes R, G, B, A. Both are premultiplied.
NSBitmapImageRep *BitmapOf(cairo_surface_t *surface) {
  NSBitmapImageRep *bitmap = [[[NSBitmapImageRep alloc] initWithBitmapDataPlanes:NULL
                                                                      pixelsWide:kSide
                                                                      pixelsHigh:kSide
                                                                   bitsPerSample:8
                                                                 samplesPerPixel:4
                                                                        hasAlpha:YES
                                                                        isPlanar:NO
                                                                  colorSpaceName:NSDeviceRGBColorSpace
                                                                     bytesPerRow:kSide * 4
                                                                    bitsPerPixel:32] autorelease];
  cairo_surface_flush(surface);
  const auto *pixels = reinterpret_cast<const uint32_t *>(cairo_image_surface_get_data(surface));
  const int pixels_per_row = cairo_image_surface_get_stride(surface) / 4;
  unsigned char *out = [bitmap bitmapData];
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      const uint32_t pixel = pixels[y * pixels_per_row + x];
      for (int shift : {16, 8, 0, 24}) *out++ = static_cast<unsigned char>(pixel >> shift);
    }
  }
  return bitmap;
}

}  // namespace

NSImage *OHostIcon() {
  cairo_surface_t *surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kSide, kSide);
  cairo_t *cairo = cairo_create(surface);
  cairo_scale(cairo, kSide / kUnits, kSide / kUnits);
  DrawFilm(cairo);
  DrawPicture(cairo);
  NSImage *icon = [[[NSImage alloc] initWithSize:NSMakeSize(kUnits, kUnits)] autorelease];
  NSBitmapImageRep *bitmap = BitmapOf(surface);
  [bitmap setSize:NSMakeSize(kUnits, kUnits)];
  [icon addRepresentation:bitmap];
  cairo_destroy(cairo);
  cairo_surface_destroy(surface);
  return icon;
}
