#import <Foundation/Foundation.h>
#include <dlfcn.h>

#include "BundleLoader.h"

namespace orvane_host::internal {

// Loading goes through NSBundle, not dlopen alone, so that a plug-in finds its own bundle by its identifier.
void *LoadBundleCode(const std::string &path, std::string &error) {
  @autoreleasepool {
    NSBundle *bundle = [NSBundle bundleWithPath:[NSString stringWithUTF8String:path.c_str()]];
    NSString *executable = [bundle executablePath];
    error = "it is not a bundle with an executable";
    if (!executable) return nullptr;
    // NSBundle only says that loading failed; the linker says why.
    void *code = dlopen([executable fileSystemRepresentation], RTLD_LAZY);
    error = code ? "the bundle's code cannot be loaded" : dlerror();
    return code && [bundle load] ? code : nullptr;
  }
}

}  // namespace orvane_host::internal
