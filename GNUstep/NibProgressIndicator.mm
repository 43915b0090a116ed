// GNUstep's interface file loader reads a progress indicator's "displayed when stopped" the wrong way round, and takes
// a bar for indeterminate. The windows have bars that always show and spinners that show while they turn.
#import <Cocoa/Cocoa.h>

@implementation NSProgressIndicator (OrvNibAttributes)

- (void)awakeFromNib {
  const BOOL isBar = [self style] != NSProgressIndicatorSpinningStyle;
  [self setDisplayedWhenStopped:isBar];
  if (!isBar) return;
  [self setHidden:NO];
  [self setIndeterminate:NO];
  [self setDoubleValue:[self minValue]];
}

@end
