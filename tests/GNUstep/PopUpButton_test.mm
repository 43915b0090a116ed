// What keys and the mouse do to menus, beyond what the demonstration does. The mouse is the display's.
#import <Cocoa/Cocoa.h>
#import <GNUstepGUI/GSDisplayServer.h>
#include <dispatch/dispatch.h>
#include <gtest/gtest.h>

#include <string>

#import "BareWindow.h"
#import "Controls.h"
#include "WindowScript.h"

using namespace window_test;

namespace {

NSString *Key(unichar character) {
  return [NSString stringWithCharacters:&character length:1];
}

// Has the display's mouse do that, in xdotool's words.
void Mouse(const std::string &words) {
  NSString *text = [NSString stringWithUTF8String:words.c_str()];
  NSTask *task = [NSTask launchedTaskWithLaunchPath:@"/usr/bin/xdotool"
                                          arguments:[text componentsSeparatedByString:@" "]];
  [task waitUntilExit];
  EXPECT_EQ([task terminationStatus], 0) << words;
}

void Click(const std::string &seconds = "0.1") {
  Mouse("mousedown 1 sleep " + seconds + " mouseup 1");
}

// Moves the mouse to the middle of the view's rectangle.
void MoveTo(Script &actions, NSView *view, NSRect rectangle) {
  NSPoint place = {};
  actions.OnMain([&] {
    const NSPoint middle = NSMakePoint(NSMidX(rectangle), NSMidY(rectangle));
    place = [[view window] convertBaseToScreen:[view convertPoint:middle toView:nil]];
    place.y = NSMaxY([[NSScreen mainScreen] frame]) - place.y;
  });
  Mouse("mousemove " + std::to_string(place.x) + " " + std::to_string(place.y) + " sleep 0.1");
}

// The menu follows the mouse since it was clicked open. The window manager may still be moving it.
void MoveToItem(Script &actions, NSMenuView *menu, int item) {
  actions.WaitFor("the menu to follow", [menu] { return [menu highlightedItemIndex] >= 0; });
  bool highlighted = false;
  for (int i = 0; i < 100 && !highlighted; ++i) {
    MoveTo(actions, menu, [menu rectOfItemAtIndex:item]);
    actions.OnMain([&] { highlighted = [menu highlightedItemIndex] == item; });
  }
  EXPECT_TRUE(highlighted) << item;
}

// Runs the script while the main loop runs.
void RunMouse(const std::function<void(Script &)> &script) {
  bool over = false;
  RunWithScript([&over] { SpinUntil([&over] { return over; }); },
                [&](Script &actions) {
                  script(actions);
                  actions.OnMain([&over] { over = true; });
                });
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

  // Clicks on the button, with the mouse button held for that long.
  void ClickOpen(Script &actions, const char *seconds = "0.1") {
    // The window manager, which gives a window the keyboard after its place, and not what is thought of either here.
    std::string window, place;
    actions.OnMain([&] {
      const NSInteger number = [window_ windowNumber];
      window = std::to_string(reinterpret_cast<uintptr_t>([GSServerForWindow(window_) windowDevice:number]));
      const NSRect button = [button_ convertRect:[button_ bounds] toView:nil];
      const CGFloat top = NSHeight([[window_ contentView] frame]);
      place = std::to_string(NSMidX(button)) + " " + std::to_string(top - NSMidY(button));
    });
    Mouse("windowactivate --sync " + window + " mousemove --window " + window + " " + place);
    Click(seconds);
    actions.WaitFor("the menu", [this] { return IsOpen(); });
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

TEST_F(PopUpButton, AClickOpensTheMenuAndAnotherChooses) {
  int choices = 0;
  for (const char *held : {"0.01", "0.1", "0.4"}) {
    const int chosen = static_cast<int>([button_ indexOfSelectedItem]) + 2;
    RunMouse([&](Script &actions) {
      ClickOpen(actions, held);
      MoveToItem(actions, Menu(), chosen);
      actions.OnMain([&] { EXPECT_EQ(ActionCount(choices_), choices) << held; });
      bool delivered = false;
      bool *const noted = &delivered;
      dispatch_async(dispatch_get_main_queue(), ^{
          *noted = true;
      });
      actions.WaitFor("the main queue to go on", [&delivered] { return delivered; });
      Click();
      actions.WaitFor("the menu to close", [this] { return !IsOpen(); });
    });
    EXPECT_EQ([button_ indexOfSelectedItem], chosen) << held;
    EXPECT_EQ(ActionCount(choices_), ++choices) << held;
  }
}

// On this window, beside all windows, and by the key of that, which must not reach the window.
TEST_F(PopUpButton, AMenuThatWasClickedOpenClosesAndChoosesNothing) {
  for (const char *way :
       {"this window", "mousemove 1000 700 sleep 0.1 mousedown 1 sleep 0.1 mouseup 1", "key Escape"}) {
    RunMouse([&](Script &actions) {
      ClickOpen(actions);
      MoveToItem(actions, Menu(), 2);
      if (way == std::string("this window")) {
        MoveTo(actions, [window_ contentView], NSMakeRect(250, 0, 50, 100));
        Click();
      } else {
        Mouse(way);
      }
      actions.WaitFor("the menu to close", [this] { return !IsOpen(); });
    });
    EXPECT_EQ([button_ indexOfSelectedItem], 0) << way;
    EXPECT_EQ(ActionCount(choices_), 0) << way;
    EXPECT_EQ(ActionCount(presses_), 0) << way;
  }
}

TEST_F(PopUpButton, KeysMoveThroughAMenuThatWasClickedOpen) {
  RunMouse([this](Script &actions) {
    ClickOpen(actions);
    MoveToItem(actions, Menu(), 2);
    Mouse("key Down");
    actions.WaitFor("the next item", [this] { return [Menu() highlightedItemIndex] == 3; });
    Mouse("key Return");
    actions.WaitFor("the menu to close", [this] { return !IsOpen(); });
  });
  EXPECT_EQ([button_ indexOfSelectedItem], 3);
  EXPECT_EQ(ActionCount(choices_), 1);
  EXPECT_EQ(ActionCount(presses_), 0);
}
