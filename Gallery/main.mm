// orvane-gallery: shows the plug-in's controls.
#import <Cocoa/Cocoa.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#import "ControlsWindow.h"
#include "DisplayIsReachable.h"
#import "LinuxTheme.h"
#import "PluginBundle.h"

@interface GalleryDelegate : NSObject
@end

@implementation GalleryDelegate

- (void)applicationDidFinishLaunching:(NSNotification *)notification {
  // The plug-in's objects find their images in the bundle, by its identifier. Its code is not loaded: it is in here.
  static NSBundle *const bundle = [[NSBundle alloc] initWithPath:@ORVANE_BUNDLE_PATH];
  if (!bundle || !PluginBundle()) {
    fputs("orvane-gallery: the bundle " ORVANE_BUNDLE_PATH " is missing\n", stderr);
    exit(1);
  }
  NSWindow *window = MakeControlsWindow();
  [window center];
  [window makeKeyAndOrderFront:nil];
}

- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication *)application {
  return YES;
}

@end

int main(int argc, char **argv, char **environment) {
  if (argc > 1) {
    puts("orvane-gallery shows the plug-in's controls in all their states in a window, to look at and to press. It "
         "ends\n"
         "when the window is closed, and takes no arguments.");
    return std::string(argv[1]) == "--help" ? 0 : 2;
  }
  std::string reason;
  if (!DisplayIsReachable(&reason)) {
    fprintf(stderr, "orvane-gallery: %s\n", reason.c_str());
    return 1;
  }
  @autoreleasepool {
    // AppKit would take a path among the arguments for a document to open.
    [NSProcessInfo initializeWithArguments:argv count:1 environment:environment];
    UseLinuxTheme();
    [NSApplication sharedApplication];
    [NSApp setDelegate:static_cast<id>([[GalleryDelegate alloc] init])];
    [NSApp run];
  }
  return 0;
}
