#import "PictureComparison.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace window_test {

namespace {

// No channel of any pixel may be off by more than this, of 255: more than another version of the libraries moves an
// edge's shade, and less than anything that is shifted by a pixel.
constexpr int kLevels = 24;

// The part of the pixels that may be off at all.
constexpr double kShare = 0.01;

// The largest difference of the pixels in a channel.
int Distance(NSBitmapImageRep *one, NSBitmapImageRep *other, NSInteger x, NSInteger y) {
  NSUInteger samples[2][5] = {};
  [one getPixel:samples[0] atX:x y:y];
  [other getPixel:samples[1] atX:x y:y];
  int distance = 0;
  for (int i = 0; i < 3; ++i) {
    distance = std::max(distance, std::abs(static_cast<int>(samples[0][i]) - static_cast<int>(samples[1][i])));
  }
  return distance;
}

}  // namespace

std::string ComparePictures(NSBitmapImageRep *found, NSBitmapImageRep *wanted, NSString *name) {
  std::ostringstream text;
  const NSInteger width = [wanted pixelsWide], height = [wanted pixelsHigh];
  if ([found pixelsWide] != width || [found pixelsHigh] != height) {
    text << [found pixelsWide] << " x " << [found pixelsHigh] << " pixels in place of " << width << " x " << height;
  } else {
    int pixels = 0, largest = 0;
    for (NSInteger i = 0; i < width * height; ++i) {
      const int distance = Distance(found, wanted, i % width, i / width);
      pixels += distance > 0 ? 1 : 0;
      largest = std::max(largest, distance);
    }
    if (largest <= kLevels && pixels <= kShare * static_cast<double>(width * height)) return "";
    text << pixels << " pixels are off, by up to " << largest << " levels";
  }
  NSString *path = [@ORVANE_DIFFERENCES stringByAppendingFormat:@"/%@.png", name];
  const BOOL written = [[found representationUsingType:NSPNGFileType properties:@{}] writeToFile:path atomically:YES];
  text << (written ? "; what was found is " : "; what was found cannot be written to ") << [path UTF8String];
  return text.str();
}

}  // namespace window_test
