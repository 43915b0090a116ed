#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

#import "BareWindow.h"
#import "Controls.h"

static NSMenuView *MenuViewOf(NSPopUpButton *button) {
  return static_cast<NSMenuView *>([[button menu] menuRepresentation]);
}

// Notes what a pop-up button chose, and whether its menu was still there then.
@interface ChoiceWitness : NSObject {
 @public
  int choices;
  BOOL menuWasOpen;
}
- (void)chose:(NSPopUpButton *)button;
@end

@implementation ChoiceWitness
- (void)chose:(NSPopUpButton *)button {
  ++choices;
  menuWasOpen = [[MenuViewOf(button) window] isVisible];
}
@end

namespace {

NSString *Key(unichar character) {
  return [NSString stringWithCharacters:&character length:1];
}

// A pop-up button with more items than the screen is high, which has the keyboard, and a default button beside it.
class PopUpButton : public testing::Test {
 protected:
  PopUpButton() {
    NSMutableArray *titles = [NSMutableArray array];
    for (int i = 0; i < 80; ++i) [titles addObject:[NSString stringWithFormat:@"Item %d", i]];
    [button_ addItemsWithTitles:titles];
    [button_ setTarget:witness_];
    [button_ setAction:@selector(chose:)];
    [default_ setKeyEquivalent:@"\r"];
    [default_ setTarget:counter_];
    [default_ setAction:window_test::CountedAction()];
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
    for (int i = 0; i < times; ++i) window_test::PressKey(window_, key);
  }

  bool IsOpen() { return [[MenuViewOf(button_) window] isVisible]; }

  NSWindow *window_ = [[NSWindow alloc] initWithContentRect:NSMakeRect(100, 100, 300, 100)
                                                  styleMask:NSTitledWindowMask
                                                    backing:NSBackingStoreBuffered
                                                      defer:NO];
  NSPopUpButton *button_ = [[[NSPopUpButton alloc] initWithFrame:NSMakeRect(10, 60, 200, 26) pullsDown:NO] autorelease];
  NSButton *default_ = [[[NSButton alloc] initWithFrame:NSMakeRect(10, 10, 100, 28)] autorelease];
  ChoiceWitness *witness_ = [[[ChoiceWitness alloc] init] autorelease];
  id counter_ = window_test::ActionCounter();
};

}  // namespace

TEST_F(PopUpButton, ArrowsOpenTheMenuAndWalkItAndReturnChooses) {
  Press(Key(NSDownArrowFunctionKey));
  ASSERT_TRUE(IsOpen());
  Press(Key(NSDownArrowFunctionKey), 3);
  Press(Key(NSUpArrowFunctionKey));
  EXPECT_EQ(witness_->choices, 0);
  Press(@"\r");
  EXPECT_EQ([button_ indexOfSelectedItem], 2);
  EXPECT_EQ(witness_->choices, 1);
  EXPECT_FALSE(witness_->menuWasOpen) << "the action had the menu in the way";
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(window_test::ActionCount(counter_), 0) << "Return pressed the default button behind the menu";
  Press(@"\r");
  EXPECT_EQ(window_test::ActionCount(counter_), 1);
}

TEST_F(PopUpButton, EscapeClosesTheMenuWhichKeepsItsItemsOnTheScreenAndChangesNothing) {
  Press(Key(NSUpArrowFunctionKey));
  Press(Key(NSDownArrowFunctionKey), 75);
  NSMenuView *menu = MenuViewOf(button_);
  ASSERT_EQ([menu highlightedItemIndex], 75);
  const NSRect item = [menu convertRect:[menu rectOfItemAtIndex:75] toView:nil];
  const CGFloat bottom = NSMinY([[menu window] frame]) + NSMinY(item);
  EXPECT_GE(bottom, 0);
  EXPECT_LE(bottom + NSHeight(item), NSHeight([[NSScreen mainScreen] frame]));
  Press(@"\033");
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ([button_ indexOfSelectedItem], 0);
  EXPECT_EQ(witness_->choices, 0);
}
