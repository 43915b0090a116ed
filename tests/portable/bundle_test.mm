// Usage: bundle_test BUNDLE
// Loads the bundle, asks its entry point something that it does not know, and loads its interface files.
#import <Cocoa/Cocoa.h>
#include <dlfcn.h>

#include <cstdio>

// Takes whatever an interface file connects.
@interface AnyOwner : NSObject
@end

@implementation AnyOwner
- (void)setValue:(id)value forUndefinedKey:(NSString *)key {
}
@end

static int failures = 0;

static void Expect(BOOL true_now, const char *what) {
  printf("%s: %s\n", true_now ? "ok" : "NOT SO", what);
  if (!true_now) ++failures;
}

static void LoadInterfaceFiles(NSBundle *bundle) {
  for (NSString *name in @[
         @"OrvaneUI", @"OrvaneUploadWindowController", @"UploadStatusWindowController",
         @"UploadCompleteWindowController"
       ]) {
    AnyOwner *owner = [[[AnyOwner alloc] init] autorelease];
    NSArray *objects = nil;
    Expect([bundle loadNibNamed:name owner:owner topLevelObjects:&objects], [name UTF8String]);
    BOOL hasWindow = NO;
    for (id object in objects) hasWindow = hasWindow || [object isKindOfClass:[NSWindow class]];
    Expect(hasWindow, "it holds a window");
  }
}

int main(int argc, char **argv) {
  if (argc != 2) return 2;
  @autoreleasepool {
    [NSApplication sharedApplication];
    NSBundle *bundle = [NSBundle bundleWithPath:[NSString stringWithUTF8String:argv[1]]];
    Expect([bundle load], "the bundle loads");
    void *module = dlopen([[bundle executablePath] fileSystemRepresentation], RTLD_NOW | RTLD_NOLOAD);
    int (*entry)(int, void *, void *) = nullptr;
    *reinterpret_cast<void **>(&entry) = module ? dlsym(module, "xExportControllerEntry") : nullptr;
    Expect(entry != nullptr, "it has the entry point");
    Expect(entry && entry(2, nullptr, nullptr) == -100, "the entry point refuses what it does not know");
    LoadInterfaceFiles(bundle);
  }
  return failures == 0 ? 0 : 1;
}
