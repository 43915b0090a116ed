// Small things of newer AppKits.
#import <Cocoa/Cocoa.h>
#import <QuartzCore/QuartzCore.h>

double NSFoundationVersionNumber = 1056;

BOOL NSApplicationLoad(void) {
  return [NSApplication sharedApplication] != nil;
}

@implementation NSWindow (Appearance)

- (void)setAppearance:(NSAppearance *)appearance {
}

@end

@implementation NSScrollView (FlashScrollers)

- (void)flashScrollers {
}

@end

@implementation NSBundle (ImageForResource)

- (NSImage *)imageForResource:(NSString *)name {
  NSString *path = [self pathForImageResource:name];
  return path ? [[[NSImage alloc] initWithContentsOfFile:path] autorelease] : nil;
}

@end

@implementation CATransaction

+ (void)flush {
}

@end
