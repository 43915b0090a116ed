#import "PluginBundle.h"

#include <stdexcept>
#include <string>

#include "Deployment.h"
#include "ExceptionGuard.h"

// What the owner of the file that is being loaded threw; empty for nothing.
static std::string awakeningFailure;

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
  awakeningFailure.clear();
  NSArray *topLevelObjects = nil;
  const BOOL loaded = [PluginBundle() loadNibNamed:name owner:owner topLevelObjects:&topLevelObjects];
  if (!awakeningFailure.empty()) throw std::runtime_error(awakeningFailure);
  if (!loaded) return nil;
  return topLevelObjects ? topLevelObjects : [NSArray array];
}

void Awake(const std::function<void()> &body) {
  std::string message;
  if (!CatchExceptions(body, &message)) awakeningFailure = "a window could not be made: " + message;
}
