#import "RoundedButton.h"

#include <gtest/gtest.h>

#import "BareWindow.h"
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

}  // namespace

// How they look otherwise is compared with the gallery's picture.
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
  [button setTitleString:@"Render"];
  [button setTitleColor:[NSColor clearColor]];
  EXPECT_TRUE([[[[button titleLabel] attributedStringValue] attribute:NSForegroundColorAttributeName
                                                              atIndex:0
                                                       effectiveRange:NULL] isEqual:[NSColor clearColor]]);
  EXPECT_TRUE([[button accessibilityLabel] isEqual:@"Render"]);
}

TEST(RoundedButton, ADisabledOneShowsThePressButSendsNothing) {
  RoundedButton *button = Button(1);
  id counter = window_test::ActionCounter();
  [button setTarget:counter];
  [button setAction:window_test::CountedAction()];
  for (const BOOL enabled : {NO, YES}) {
    [button setEnabled:enabled];
    [button mouseDown:nil];
    EXPECT_EQ([[button backgroundView] type], 5);
    [button mouseUp:nil];
    EXPECT_EQ(window_test::ActionCount(counter), enabled ? 1 : 0);
    [button performClick:nil];  // as the keyboard does
    EXPECT_EQ(window_test::ActionCount(counter), enabled ? 2 : 0);
    EXPECT_EQ([[button backgroundView] type], 4);
  }
}
