#import <Foundation/Foundation.h>

#include "PluginResources.h"

void UsePluginResources() {
  static NSBundle *bundle = nil;
  if (!bundle) bundle = [[NSBundle alloc] initWithPath:@ORVANE_BUNDLE_PATH];
}
