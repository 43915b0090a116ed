// Folders for what a test writes.
#pragma once

#import <Foundation/Foundation.h>

#include <cstdlib>
#include <string>

namespace window_test {

/// Makes an empty folder in the test's own temporary folder ($TMPDIR, which goes with the test); NSTemporaryDirectory
/// is another, and stays. Returns its path, autoreleased, or nil when it cannot be made.
inline NSString *NewFolder() {
  const char *parent = getenv("TMPDIR");
  std::string path = std::string(parent ? parent : "/tmp") + "/test-XXXXXX";
  return mkdtemp(path.data()) ? [NSString stringWithUTF8String:path.c_str()] : nil;
}

}  // namespace window_test
