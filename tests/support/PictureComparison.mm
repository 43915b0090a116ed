#import "PictureComparison.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace window_test {

namespace {

// The largest difference of the pixels in a channel.
int Distance(NSBitmapImageRep *one, NSBitmapImageRep *other, NSInteger x, NSInteger y) {
  NSUInteger samples[2][5] = {};
  NSBitmapImageRep *const pictures[] = {one, other};
  for (int i = 0; i < 2; ++i) {
    [pictures[i] getPixel:samples[i] atX:x y:y];
    if ([pictures[i] samplesPerPixel] < 3) samples[i][1] = samples[i][2] = samples[i][0];  // grey
  }
  int distance = 0;
  for (int i = 0; i < 3; ++i) {
    distance = std::max(distance, std::abs(static_cast<int>(samples[0][i]) - static_cast<int>(samples[1][i])));
  }
  return distance;
}

}  // namespace

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

std::string ComparePictures(NSBitmapImageRep *found, NSBitmapImageRep *wanted, NSString *folder, NSString *name,
                            PictureBounds bounds) {
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
    if (largest <= bounds.levels && pixels <= bounds.share * static_cast<double>(width * height)) return "";
    text << pixels << " pixels are off, by up to " << largest << " levels";
  }
  NSString *path = [folder stringByAppendingPathComponent:[name stringByAppendingPathExtension:@"png"]];
  [[NSFileManager defaultManager] createDirectoryAtPath:folder
                            withIntermediateDirectories:YES
                                             attributes:nil
                                                  error:NULL];
  NSData *png = [found representationUsingType:NSPNGFileType properties:@{}];
  text << ([png writeToFile:path atomically:YES] ? "; what was found is " : "; what was found cannot be written to ")
       << [path UTF8String];
  return text.str();
}

NSString *DifferencesFolder() {
  return @ORVANE_DIFFERENCES;
}

}  // namespace window_test
