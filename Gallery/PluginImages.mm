#include "PluginImages.h"

#import "PluginBundle.h"

bool UseBuiltBundle() {
  static NSBundle *bundle = nil;
  if (!bundle) bundle = [[NSBundle alloc] initWithPath:@ORVANE_BUNDLE_PATH];
  return PluginBundle() != nil;
}
