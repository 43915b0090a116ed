#import <Cocoa/Cocoa.h>

double NSFoundationVersionNumber = 1056;

BOOL NSApplicationLoad(void) {
  return [NSApplication sharedApplication] != nil;
}
