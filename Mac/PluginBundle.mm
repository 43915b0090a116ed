#import "PluginBundle.h"

#include "Deployment.h"

NSBundle *PluginBundle() {
  return [NSBundle bundleWithIdentifier:@ORVANE_BUNDLE_IDENTIFIER];
}

NSImage *PluginImage(NSString *fileName) {
  static NSMutableDictionary *images = nil;
  if (!images) images = [[NSMutableDictionary alloc] init];
  NSImage *image = [images objectForKey:fileName];
  if (image) return image;
  image = [PluginBundle() imageForResource:fileName];
  if (image) [images setObject:image forKey:fileName];
  return image;
}

NSArray *LoadInterfaceFile(NSString *name, id owner) {
  NSArray *topLevelObjects = nil;
  if (![PluginBundle() loadNibNamed:name owner:owner topLevelObjects:&topLevelObjects]) return nil;
  return topLevelObjects ? topLevelObjects : [NSArray array];
}
