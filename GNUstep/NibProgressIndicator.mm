// GNUstep's interface file loader reads a progress bar's "displayed when stopped" the wrong way round, which hides the
// bar, and takes it for indeterminate. Spinners come out right.
#import <Cocoa/Cocoa.h>

@interface NSProgressIndicator (OrvNibAttributes)
@end

@implementation NSProgressIndicator (OrvNibAttributes)

- (void)awakeFromNib {
  if ([self style] == NSProgressIndicatorSpinningStyle) return;
  [self setDisplayedWhenStopped:YES];
  [self setHidden:NO];
  [self setIndeterminate:NO];
  [self setDoubleValue:[self minValue]];
}

@end
