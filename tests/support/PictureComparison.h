// Comparing a picture with the one that it should be.
#pragma once

#import <Cocoa/Cocoa.h>

#include <string>

namespace window_test {

/// How far two pictures of the same thing may be apart.
struct PictureBounds {
  /// No channel of any pixel may be off by more than this, of 255: more than another version of the libraries moves
  /// an edge's shade, and less than anything that is shifted by a pixel.
  int levels = 24;

  /// The part of the pixels that may be off at all, from 0 to 1.
  double share = 0.01;
};

/// A black picture of 8 bits a channel, red, green and blue, autoreleased.
NSBitmapImageRep *EmptyPicture(NSInteger width, NSInteger height);

/// Compares the pictures, of 8 bits a channel, pixel by pixel. Returns an empty string when they agree within the
/// bounds. Otherwise it says how they differ, writes the picture that was found as NAME.png into the folder, which it
/// makes, and says where it is. Pictures of two sizes differ. Main thread.
std::string ComparePictures(NSBitmapImageRep *found, NSBitmapImageRep *wanted, NSString *folder, NSString *name,
                            PictureBounds bounds = {});

/// The folder, within the build's, for what tests keep of pictures that differ.
NSString *DifferencesFolder();

}  // namespace window_test
