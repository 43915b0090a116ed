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

std::string StatesUnderTheMouse(NSControl *control, const std::function<int()> &state) {
  BareWindow window(NSMakeSize(400, 200));
  [control setFrameOrigin:NSMakePoint(10, 10)];
  window.Add(control);
  const NSPoint inside = NSMakePoint(20, 20);
  const NSPoint outside = NSMakePoint(390, 190);
  const struct {
    NSEventType type;
    NSPoint point;
    bool last;
  } events[] = {{NSRightMouseDown, inside, false},  {NSRightMouseUp, inside, true},
                {NSLeftMouseDown, inside, true},    {NSLeftMouseDragged, outside, true},
                {NSRightMouseDown, outside, false}, {NSRightMouseUp, outside, true},
                {NSLeftMouseUp, outside, true}};
  std::string states = std::to_string(state());
  for (const auto &event : events) {
    SendMouse(window.Window(), event.type, event.point);
    if (event.last) states += " " + std::to_string(state());
  }
  return states;
}

}  // namespace window_test
