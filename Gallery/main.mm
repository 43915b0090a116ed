// orvane-gallery: shows the plug-in's controls.
#import <Cocoa/Cocoa.h>

#import "ControlsWindow.h"
#import "LinuxTheme.h"
#import "PluginBundle.h"

#include <getopt.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

const char *const kHelp =
    R"(Usage: orvane-gallery

Shows the plug-in's controls in all their states in a window, to look at and to press. It ends when the window is closed.

  --help  show this help)";

constexpr int kUsageError = 2;

[[noreturn]] void EndWithUsageError(const std::string &reason) {
  if (!reason.empty()) fprintf(stderr, "orvane-gallery: %s\n", reason.c_str());
  fputs("orvane-gallery: see orvane-gallery --help\n", stderr);
  exit(kUsageError);
}

void ReadOptions(int argc, char **argv) {
  const option options[] = {{"help", no_argument, nullptr, 'h'}, {nullptr, 0, nullptr, 0}};
  const int code = getopt_long(argc, argv, "", options, nullptr);
  if (code == 'h') {
    puts(kHelp);
    exit(0);
  }
  if (code != -1) EndWithUsageError("");  // getopt has told the reason
  if (optind < argc) EndWithUsageError(std::string("there is no use for \"") + argv[optind] + "\"");
  const char *display = getenv("DISPLAY");
  if (!display || !*display) EndWithUsageError("there is no display to open windows on; set DISPLAY");
}

}  // namespace

@interface GalleryDelegate : NSObject
@end

@implementation GalleryDelegate

- (void)applicationDidFinishLaunching:(NSNotification *)notification {
  (void)notification;
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
  (void)application;
  return YES;
}

@end

int main(int argc, char **argv, char **environment) {
  ReadOptions(argc, argv);
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
