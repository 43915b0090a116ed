#import "RoundedButton.h"

#include <gtest/gtest.h>

#import "BareWindow.h"
#import "NSTextField+VerticalAlignment.h"
#import "RoundedView.h"
#include "PluginResources.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

RoundedButton *Button(int type) {
  UsePluginResources();
  RoundedButton *button = [[[RoundedButton alloc] initWithFrame:NSMakeRect(0, 0, 140, 32)] autorelease];
  [button awakeFromNib];
  [button setType:type];
  return button;
}

// One that tells the counter when it was pressed.
RoundedButton *CountedButton(int type, id counter) {
  RoundedButton *button = Button(type);
  [button setTarget:counter];
  [button setAction:window_test::CountedAction()];
  return button;
}

// What the button shows in a window of its own.
NSBitmapImageRep *Shown(RoundedButton *button) {
  window_test::BareWindow window([button frame].size);
  window.Add(button);
  [window.Window() makeFirstResponder:nil];
  return window.Picture();
}

struct Ink {
  NSInteger left = -1;   // pixels of background before the title
  NSInteger right = -1;  // and after it
};

bool ColumnsDiffer(NSBitmapImageRep *one, NSBitmapImageRep *other, NSInteger x) {
  for (NSInteger y = 0; y < [one pixelsHigh]; ++y) {
    NSUInteger first[5] = {}, second[5] = {};
    [one getPixel:first atX:x y:y];
    [other getPixel:second atX:x y:y];
    if (!std::equal(first, first + 3, second)) return true;
  }
  return false;
}

// Where the title's glyphs are: the columns in which the button differs from itself without a title.
Ink TitleInk(RoundedButton *button, NSString *title) {
  [button setTitleString:@""];
  NSBitmapImageRep *without = Shown(button);
  [button setTitleString:title];
  NSBitmapImageRep *with = Shown(button);
  Ink ink;
  for (NSInteger x = 0; x < [with pixelsWide]; ++x) {
    if (!ColumnsDiffer(with, without, x)) continue;
    if (ink.left < 0) ink.left = x;
    ink.right = [with pixelsWide] - 1 - x;
  }
  return ink;
}

}  // namespace

TEST(RoundedButton, EachStyleHasItsBackgroundsAndFont) {
  const struct {
    int normal, highlighted;
    CGFloat size;
  } styles[] = {{6, 7, 12}, {4, 5, 16}, {8, 9, 16}, {10, 11, 12}, {12, 13, 16}};
  for (int type = 0; type < 5; ++type) {
    RoundedButton *button = Button(type);
    EXPECT_EQ([[button backgroundView] type], styles[type].normal);
    EXPECT_EQ([[[button titleLabel] font] pointSize], styles[type].size);
    EXPECT_TRUE([[[[button titleLabel] font] fontName] hasSuffix:@"Bold"]);
    [button mouseDown:nil];
    EXPECT_EQ([[button backgroundView] type], styles[type].highlighted);
    [button mouseUp:nil];
    EXPECT_EQ([[button backgroundView] type], styles[type].normal);
  }
  RoundedButton *button = Button(4);
  [button setType:5];
  EXPECT_EQ([[button backgroundView] type], 12);
}

TEST(RoundedButton, ADisabledOneShowsThePressButSendsNothing) {
  id counter = window_test::ActionCounter();
  RoundedButton *button = CountedButton(1, counter);
  [button setEnabled:NO];
  [button mouseDown:nil];
  EXPECT_EQ([[button backgroundView] type], 5);
  [button mouseUp:nil];
  EXPECT_EQ(window_test::ActionCount(counter), 0);
  [button setEnabled:YES];
  [button mouseDown:nil];
  [button mouseUp:nil];
  EXPECT_EQ(window_test::ActionCount(counter), 1);
}

TEST(RoundedButton, CentresItsTitle) {
  RoundedButton *button = Button(1);
  [button setTitleString:@"Upload"];
  NSTextField *label = [button titleLabel];
  const CGFloat height = [[label attributedStringValue] size].height;
  EXPECT_TRUE(NSEqualRects([label frame], NSMakeRect(0, std::floor((32 - height) / 2 - 3.5), 140, 32)));
  EXPECT_EQ([label alignment], NSTextAlignmentCenter);
  EXPECT_TRUE([[label textColor] isEqual:[NSColor whiteColor]]);
  NSRect moved = [label titleRectForBounds:NSMakeRect(3, 4, 50, height + 13)];
  EXPECT_TRUE(NSEqualRects(moved, NSMakeRect(3, 3, 50, height + 13)));
}

// The glyphs themselves, at rest and pressed. The title reads the same from both sides, so that its ink is as wide of
// its middle on the left as on the right; a pixel is left over when title and button are not both odd or even.
TEST(RoundedButton, DrawsItsTitleInTheMiddle) {
  for (int type = 0; type < 5; ++type) {
    for (CGFloat width : {90, 141, 200}) {
      for (BOOL pressed : {NO, YES}) {
        @autoreleasepool {
          RoundedButton *button = Button(type);
          [button setFrameSize:NSMakeSize(width, 32)];
          [button setHighlighted:pressed];
          const Ink ink = TitleInk(button, @"AVOVA");
          EXPECT_GT(ink.left, 8) << type;
          EXPECT_GT(ink.right, 8) << type;
          EXPECT_LE(std::labs(ink.left - ink.right), 1) << type << ": " << ink.left << " and " << ink.right;
        }
      }
    }
  }
}

// The release counts wherever the pointer is; the second mouse button does nothing.
TEST(RoundedButton, StaysPressedWhileTheMouseButtonIsHeld) {
  id counter = window_test::ActionCounter();
  RoundedButton *button = CountedButton(2, counter);
  EXPECT_EQ(window_test::StatesUnderTheMouse(button, [button] { return [[button backgroundView] type]; }),
            "8 8 9 9 9 8");
  EXPECT_EQ(window_test::ActionCount(counter), 1);
}

TEST(RoundedButton, TheKeyboardPressesItUnlessItIsDisabled) {
  id counter = window_test::ActionCounter();
  RoundedButton *button = CountedButton(0, counter);
  [button performClick:nil];
  EXPECT_EQ(window_test::ActionCount(counter), 1);
  [button setEnabled:NO];
  [button performClick:nil];
  EXPECT_EQ(window_test::ActionCount(counter), 1);
  EXPECT_EQ([[button backgroundView] type], 6);
}
