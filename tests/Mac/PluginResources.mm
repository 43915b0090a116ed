#include "PluginResources.h"

#import <Foundation/Foundation.h>

void UsePluginResources() {
  static NSBundle *bundle = nil;
  if (!bundle) bundle = [[NSBundle alloc] initWithPath:@ORVANE_BUNDLE_PATH];
}
