// orvane-gallery: shows the plug-in's controls, or writes pictures of them.
#import <Cocoa/Cocoa.h>

#import "Looks.h"
#import "Scenes.h"
#include "PluginImages.h"

#include <getopt.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

const char *const kHelp =
    R"(Usage: orvane-gallery [OPTION...]

Shows the plug-in's controls in a window, to look at and to press. It ends when the window is closed.

  --scene NAME       show this scene (default: the first of those below)
  --pictures FOLDER  show nothing; write a picture of each scene, NAME.png, into the folder, which must exist
  --help             show this help

Scenes:)";

constexpr int kUsageError = 2;

struct Options {
  const Scene *scene = &Scenes().front();
  std::string pictures;  // folder; empty: show the scene
};

const Scene *SceneNamed(const char *name) {
  for (const Scene &scene : Scenes()) {
    if (strcmp(scene.name, name) == 0) return &scene;
  }
  return nullptr;
}

void PrintHelp() {
  puts(kHelp);
  for (const Scene &scene : Scenes()) printf("  %s\n", scene.name);
}

[[noreturn]] void EndWithUsageError(const std::string &reason) {
  if (!reason.empty()) fprintf(stderr, "orvane-gallery: %s\n", reason.c_str());
  fputs("orvane-gallery: see orvane-gallery --help\n", stderr);
  exit(kUsageError);
}

// Ends the program after --help and on options that cannot be.
Options ParseOptions(int argc, char **argv) {
  const option options[] = {{"scene", required_argument, nullptr, 's'},
                            {"pictures", required_argument, nullptr, 'p'},
                            {"help", no_argument, nullptr, 'h'},
                            {nullptr, 0, nullptr, 0}};
  Options parsed;
  for (int code = 0; (code = getopt_long(argc, argv, "", options, nullptr)) != -1;) {
    if (code == 's') {
      parsed.scene = SceneNamed(optarg);
      if (!parsed.scene) EndWithUsageError(std::string("there is no scene ") + optarg);
    } else if (code == 'p') {
      parsed.pictures = optarg;
    } else if (code == 'h') {
      PrintHelp();
      exit(0);
    } else {
      EndWithUsageError("");  // getopt has told the reason
    }
  }
  if (optind < argc) EndWithUsageError(std::string("there is no use for \"") + argv[optind] + "\"");
  return parsed;
}

void Show(NSWindow *window) {
  [[window contentView] setNeedsDisplay:YES];
  [window makeKeyAndOrderFront:nil];
  [window makeFirstResponder:nil];  // no focus ring
  [window display];
}

// Writes what the window shows, without its frame.
bool WritePicture(NSWindow *window, const std::string &path) {
  NSView *content = [window contentView];
  [content lockFocus];
  NSBitmapImageRep *bitmap = [[[NSBitmapImageRep alloc] initWithFocusedViewRect:[content bounds]] autorelease];
  [content unlockFocus];
  NSData *png = [bitmap representationUsingType:NSPNGFileType properties:@{}];
  return [png writeToFile:[NSString stringWithUTF8String:path.c_str()] atomically:YES];
}

// Returns the program's exit status.
int WritePictures(const std::string &folder) {
  for (const Scene &scene : Scenes()) {
    const std::string path = folder + "/" + scene.name + ".png";
    NSWindow *window = scene.make();
    Show(window);
    const bool written = WritePicture(window, path);
    [window close];
    [window release];
    if (written) continue;
    fprintf(stderr, "orvane-gallery: cannot write %s\n", path.c_str());
    return 1;
  }
  return 0;
}

}  // namespace

@interface GalleryDelegate : NSObject {
 @public
  Options options;
}
@end

@implementation GalleryDelegate

- (void)applicationDidFinishLaunching:(NSNotification *)notification {
  (void)notification;
  if (!UseBuiltBundle()) {
    fputs("orvane-gallery: the bundle " ORVANE_BUNDLE_PATH " is missing\n", stderr);
    exit(1);
  }
  [self performSelector:@selector(begin) withObject:nil afterDelay:0];
}

- (void)begin {
  if (!options.pictures.empty()) exit(WritePictures(options.pictures));
  NSWindow *window = options.scene->make();
  [window center];
  Show(window);
}

- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication *)application {
  (void)application;
  return YES;
}

@end

int main(int argc, char **argv, char **environment) {
  const Options options = ParseOptions(argc, argv);
  const char *display = getenv("DISPLAY");
  if (!display || !*display) EndWithUsageError("there is no display to open windows on; set DISPLAY");
  @autoreleasepool {
    // AppKit would take a path among the arguments for a document to open.
    [NSProcessInfo initializeWithArguments:argv count:1 environment:environment];
    RegisterLooks();
    [NSApplication sharedApplication];
    GalleryDelegate *delegate = [[GalleryDelegate alloc] init];
    delegate->options = options;
    [NSApp setDelegate:static_cast<id>(delegate)];
    [NSApp run];
  }
  return 0;
}
