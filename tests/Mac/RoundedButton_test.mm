#import "RoundedButton.h"

#include <gtest/gtest.h>

#include <cmath>

#import "BareWindow.h"
#import "NSTextField+VerticalAlignment.h"
#include "PluginResources.h"
#import "RoundedView.h"

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
