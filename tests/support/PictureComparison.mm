#import "PictureComparison.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <sstream>

namespace window_test {

NSBitmapImageRep *EmptyPicture(NSInteger width, NSInteger height) {
  return [[[NSBitmapImageRep alloc] initWithBitmapDataPlanes:NULL
                                                  pixelsWide:width
                                                  pixelsHigh:height
                                               bitsPerSample:8
                                             samplesPerPixel:3
                                                    hasAlpha:NO
                                                    isPlanar:NO
                                              colorSpaceName:NSDeviceRGBColorSpace
                                                 bytesPerRow:0
                                                bitsPerPixel:0] autorelease];
}

namespace {

using Pixel = std::array<int, 3>;

Pixel PixelAt(NSBitmapImageRep *picture, NSInteger x, NSInteger y) {
  NSUInteger samples[5] = {};
  [picture getPixel:samples atX:x y:y];
  if ([picture samplesPerPixel] < 3) samples[1] = samples[2] = samples[0];  // grey
  return {static_cast<int>(samples[0]), static_cast<int>(samples[1]), static_cast<int>(samples[2])};
}

// The largest difference in a channel.
int Distance(const Pixel &one, const Pixel &other) {
  int distance = 0;
  for (size_t i = 0; i < one.size(); ++i) distance = std::max(distance, std::abs(one[i] - other[i]));
  return distance;
}

NSString *WritePicture(NSBitmapImageRep *picture, NSString *folder, NSString *name) {
  [[NSFileManager defaultManager] createDirectoryAtPath:folder
                            withIntermediateDirectories:YES
                                             attributes:nil
                                                  error:NULL];
  NSString *path = [folder stringByAppendingPathComponent:[name stringByAppendingPathExtension:@"png"]];
  NSData *png = [picture representationUsingType:NSPNGFileType properties:@{}];
  return [png writeToFile:path atomically:YES] ? path : [path stringByAppendingString:@" (could not be written)"];
}

struct Difference {
  NSBitmapImageRep *marked;
  long pixels = 0;
  int largest = 0;
};

Difference FindDifference(NSBitmapImageRep *found, NSBitmapImageRep *wanted) {
  const NSInteger width = [wanted pixelsWide], height = [wanted pixelsHigh];
  Difference difference{EmptyPicture(width, height)};
  for (NSInteger y = 0; y < height; ++y) {
    for (NSInteger x = 0; x < width; ++x) {
      const Pixel should = PixelAt(wanted, x, y);
      const int distance = Distance(PixelAt(found, x, y), should);
      NSUInteger shade[3] = {255, 0, 0};
      if (distance > 0) {
        ++difference.pixels;
        difference.largest = std::max(difference.largest, distance);
      } else {
        for (size_t i = 0; i < 3; ++i) shade[i] = static_cast<NSUInteger>(191 + should[i] / 4);
      }
      [difference.marked setPixel:shade atX:x y:y];
    }
  }
  return difference;
}

}  // namespace

std::string ComparePictures(NSBitmapImageRep *found, NSBitmapImageRep *wanted, NSString *folder, NSString *name,
                            PictureBounds bounds) {
  std::ostringstream text;
  const NSInteger width = [wanted pixelsWide], height = [wanted pixelsHigh];
  if ([found pixelsWide] != width || [found pixelsHigh] != height) {
    text << [found pixelsWide] << " x " << [found pixelsHigh] << " pixels in place of " << width << " x " << height;
  } else {
    const Difference difference = FindDifference(found, wanted);
    const double share = static_cast<double>(difference.pixels) / static_cast<double>(width * height);
    if (difference.largest <= bounds.levels && share <= bounds.share) return "";
    NSString *marked = WritePicture(difference.marked, folder, [name stringByAppendingString:@"-difference"]);
    text << difference.pixels << " pixels are off, by up to " << difference.largest
         << " levels: " << [marked UTF8String];
  }
  text << ", the new picture is " << [WritePicture(found, folder, [name stringByAppendingString:@"-new"]) UTF8String];
  return text.str();
}

NSString *DifferencesFolder() {
  return @ORVANE_DIFFERENCES;
}

NSBitmapImageRep *ReadPicture(NSString *path) {
  NSData *data = [NSData dataWithContentsOfFile:path];
  return data ? [NSBitmapImageRep imageRepWithData:data] : nil;
}

}  // namespace window_test
