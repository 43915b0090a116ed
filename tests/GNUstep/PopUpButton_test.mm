// What the keys do to an open menu, beyond what the demonstration by keyboard does.
#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

#import "BareWindow.h"
#import "Controls.h"

using namespace window_test;

namespace {

NSString *Key(unichar character) {
  return [NSString stringWithCharacters:&character length:1];
}

// A pop-up button with more items than the screen is high, which has the keyboard, and a default button beside it.
class PopUpButton : public testing::Test {
 protected:
  PopUpButton() {
    for (int i = 0; i < 80; ++i) [button_ addItemWithTitle:[NSString stringWithFormat:@"Item %d", i]];
    [default_ setKeyEquivalent:@"\r"];
    [button_ setTarget:choices_];
    [button_ setAction:CountedAction()];
    [default_ setTarget:presses_];
    [default_ setAction:CountedAction()];
    [window_ setReleasedWhenClosed:NO];
    [[window_ contentView] addSubview:button_];
    [[window_ contentView] addSubview:default_];
    [window_ makeKeyAndOrderFront:nil];
    [window_ makeFirstResponder:button_];
  }

  ~PopUpButton() override {
    [window_ close];
    [window_ release];
  }

  void Press(NSString *key, int times = 1) {
    for (int i = 0; i < times; ++i) PressKey(window_, key);
  }

  NSMenuView *Menu() { return static_cast<NSMenuView *>([[button_ menu] menuRepresentation]); }
  bool IsOpen() { return [[Menu() window] isVisible]; }

  NSWindow *window_ = [[NSWindow alloc] initWithContentRect:NSMakeRect(100, 100, 300, 100)
                                                  styleMask:NSTitledWindowMask
                                                    backing:NSBackingStoreBuffered
                                                      defer:NO];
  NSPopUpButton *button_ = [[[NSPopUpButton alloc] initWithFrame:NSMakeRect(10, 60, 200, 26) pullsDown:NO] autorelease];
  NSButton *default_ = [[[NSButton alloc] initWithFrame:NSMakeRect(10, 10, 100, 28)] autorelease];
  id choices_ = ActionCounter();
  id presses_ = ActionCounter();
};

}  // namespace

TEST_F(PopUpButton, ReturnChoosesAndDoesNotReachTheDefaultButtonBehindTheMenu) {
  Press(Key(NSDownArrowFunctionKey));
  ASSERT_TRUE(IsOpen());
  Press(Key(NSDownArrowFunctionKey), 3);
  Press(Key(NSUpArrowFunctionKey));
  EXPECT_EQ(ActionCount(choices_), 0);
  Press(@"\r");
  EXPECT_EQ([button_ indexOfSelectedItem], 2);
  EXPECT_EQ(ActionCount(choices_), 1);
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(ActionCount(presses_), 0);
  Press(@"\r");
  EXPECT_EQ(ActionCount(presses_), 1);
}

TEST_F(PopUpButton, EscapeClosesTheMenuWhichKeepsItsItemsOnTheScreenAndChangesNothing) {
  Press(Key(NSUpArrowFunctionKey));
  Press(Key(NSDownArrowFunctionKey), 75);
  ASSERT_EQ([Menu() highlightedItemIndex], 75);
  const NSRect item = [Menu() convertRect:[Menu() rectOfItemAtIndex:75] toView:nil];
  const CGFloat bottom = NSMinY([[Menu() window] frame]) + NSMinY(item);
  EXPECT_GE(bottom, 0);
  EXPECT_LE(bottom + NSHeight(item), NSHeight([[NSScreen mainScreen] frame]));
  Press(@"\033");
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ([button_ indexOfSelectedItem], 0);
  EXPECT_EQ(ActionCount(choices_), 0);
}
