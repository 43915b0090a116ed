#import "TagsPage.h"

// Points below the lowest view.
static const CGFloat kMargin = 4;

@implementation TagsPage

// What it holds keeps its place when the height changes.
- (BOOL)isFlipped {
  return YES;
}

- (void)fitToViews:(NSArray *)views {
  const CGFloat visible = NSHeight([[self superview] bounds]);
  CGFloat height = visible;
  for (NSView *view in views) {
    height = MAX(height, NSMaxY([view convertRect:[view bounds] toView:self]) + kMargin);
  }
  [self setFrameSize:NSMakeSize(NSWidth([self frame]), height)];
  // Where scrollers hide until one scrolls, nothing else tells that there is more.
  if (height > visible) [[self enclosingScrollView] flashScrollers];
}

@end
