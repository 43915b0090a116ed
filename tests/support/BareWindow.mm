#import "BareWindow.h"

#import "Controls.h"

@interface WindowTestActionCounter : NSObject {
 @public
  int count;
}
- (void)countAction:(id)sender;
@end

@implementation WindowTestActionCounter
- (void)countAction:(id)sender {
  ++count;
}
@end

namespace window_test {

BareWindow::BareWindow(NSSize size) {
  window_ = [[NSWindow alloc] initWithContentRect:NSMakeRect(100, 100, size.width, size.height)
                                        styleMask:NSBorderlessWindowMask
                                          backing:NSBackingStoreBuffered
                                            defer:NO];
  [window_ setReleasedWhenClosed:NO];
  [window_ orderFront:nil];
}

BareWindow::~BareWindow() {
  for (NSView *view in [[[[window_ contentView] subviews] copy] autorelease]) [view removeFromSuperview];
  [window_ close];
  [window_ release];
}

NSBitmapImageRep *BareWindow::Picture() const {
  return PictureOf(window_);
}

int ActionCount(id counter) {
  return static_cast<WindowTestActionCounter *>(counter)->count;
}

id ActionCounter() {
  return [[[WindowTestActionCounter alloc] init] autorelease];
}

SEL CountedAction() {
  return @selector(countAction:);
}

}  // namespace window_test
