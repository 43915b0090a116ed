// Comparing a picture with the one that it should be.
#pragma once

#import <Cocoa/Cocoa.h>

#include <string>

namespace window_test {

/// Compares the pictures, of 8 bits a channel, pixel by pixel. Returns an empty string when they agree but for what
/// another version of the libraries may shade differently. Otherwise it says how they differ, writes the picture that
/// was found as NAME.png into a folder within the build, and says where it is. Main thread.
std::string ComparePictures(NSBitmapImageRep *found, NSBitmapImageRep *wanted, NSString *name);

}  // namespace window_test
