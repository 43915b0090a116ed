#import <Cocoa/Cocoa.h>

double NSFoundationVersionNumber = 1056;

BOOL NSApplicationLoad(void) { return [NSApplication sharedApplication] != nil; }

@implementation NSBundle (TopLevelNibLoading)

- (BOOL)loadNibNamed:(NSString *)name owner:(id)owner topLevelObjects:(NSArray **)topLevelObjects {
  NSNib *nib = [[[NSNib alloc] initWithNibNamed:name bundle:self] autorelease];
  return nib != nil && [nib instantiateWithOwner:owner topLevelObjects:topLevelObjects];
}

@end
