#import <Foundation/Foundation.h>
#include <dlfcn.h>

#include "BundleLoader.h"

namespace orvane_host::internal {

// Loading goes through NSBundle, not dlopen alone, so that a plug-in finds its own bundle by its identifier.
std::string LoadBundleCode(const std::string &path, std::string &error) {
  @autoreleasepool {
    NSBundle *bundle = [NSBundle bundleWithPath:[NSString stringWithUTF8String:path.c_str()]];
    NSString *executable = [bundle executablePath];
    if (!bundle || !executable) {
      error = "it is not a bundle with an executable";
      return "";
    }
    const char *file = [executable fileSystemRepresentation];
    // NSBundle only says that loading failed; the linker says why.
    void *handle = dlopen(file, RTLD_LAZY);
    if (!handle) {
      const char *reason = dlerror();
      error = reason ? reason : "unknown reason";
      return "";
    }
    const BOOL loaded = [bundle load];
    dlclose(handle);
    if (!loaded) {
      error = "the bundle's code cannot be loaded";
      return "";
    }
    return file;
  }
}

}  // namespace orvane_host::internal
