#import "PictureButton.h"

#include <gtest/gtest.h>

#import "BareWindow.h"
#import "Controls.h"
#include "PluginResources.h"
#import "RoundedButton.h"
#import "RoundedView.h"
#import "TagButton.h"

namespace {

// One of each kind.
NSArray *Buttons() {
  UsePluginResources();
  RoundedButton *button = [[[RoundedButton alloc] initWithFrame:NSMakeRect(10, 10, 100, 32)] autorelease];
  [button awakeFromNib];
  [button setTitleString:@"Upload"];
  TagButton *chip = [[[TagButton alloc] initWithFrame:NSMakeRect(10, 10, 0, 26)] autorelease];
  [chip setTitleString:@"tag"];
  return @[ button, chip ];
}

// How light the button is where the left side of its ring is drawn, from 0 to 1.
CGFloat LightAtRing(const window_test::BareWindow &window, NSView *button) {
  const CGFloat fromTop = NSHeight([[window.Window() contentView] bounds]) - NSMidY([button frame]);
  NSColor *color = [window.Picture() colorAtX:static_cast<NSInteger>(NSMinX([button frame])) + 2
                                            y:static_cast<NSInteger>(fromTop)];
  return [color redComponent];
}

}  // namespace

TEST(PictureButton, ShowsThatItHasTheKeyboard) {
  for (PictureButton *button in Buttons()) {
    window_test::BareWindow window(NSMakeSize(200, 60));
    window.Add(button);
    EXPECT_LT(LightAtRing(window, button), 0.5) << [[button className] UTF8String];
    ASSERT_TRUE([window.Window() makeFirstResponder:button]);
    EXPECT_GT(LightAtRing(window, button), 0.9) << [[button className] UTF8String];
    [window.Window() makeFirstResponder:nil];
    EXPECT_LT(LightAtRing(window, button), 0.5) << [[button className] UTF8String];
  }
}

// A click on the label or the delete mark reaches the button.
TEST(PictureButton, TakesTheClicksOnItsPicture) {
  for (PictureButton *button in Buttons()) {
    NSView *parent = [[[NSView alloc] initWithFrame:NSMakeRect(0, 0, 200, 60)] autorelease];
    [parent addSubview:button];
    const CGFloat middle = NSMidY([button frame]);
    EXPECT_EQ([parent hitTest:NSMakePoint(25, middle)], button);
    EXPECT_EQ([parent hitTest:NSMakePoint(NSMaxX([button frame]) - 12, middle)], button);
    EXPECT_EQ([parent hitTest:NSMakePoint(NSMaxX([button frame]) + 1, middle)], parent);
  }
}

// The release counts wherever the pointer is; the second mouse button does nothing.
TEST(PictureButton, StaysPressedWhileTheMouseButtonIsHeld) {
  const NSPoint inside = NSMakePoint(20, 20);
  const NSPoint outside = NSMakePoint(190, 50);
  const struct {
    NSEventType type;
    NSPoint point;
    bool pressed;
  } events[] = {{NSRightMouseDown, inside, false},   {NSRightMouseUp, inside, false},   {NSLeftMouseDown, inside, true},
                {NSLeftMouseDragged, outside, true}, {NSRightMouseDown, outside, true}, {NSRightMouseUp, outside, true},
                {NSLeftMouseUp, outside, false}};
  for (PictureButton *button in Buttons()) {
    window_test::BareWindow window(NSMakeSize(200, 60));
    window.Add(button);
    id counter = window_test::ActionCounter();
    [button setTarget:counter];
    [button setAction:window_test::CountedAction()];
    RoundedView *background = [button valueForKey:@"backgroundView"];
    const int normal = [background type];
    for (const auto &event : events) {
      window_test::SendMouse(window.Window(), event.type, event.point);
      EXPECT_EQ([background type], event.pressed ? normal + 1 : normal) << [[button className] UTF8String];
    }
    EXPECT_EQ(window_test::ActionCount(counter), 1);
  }
}
