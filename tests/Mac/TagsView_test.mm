#import "TagsView.h"

#include <gtest/gtest.h>

#include <memory>

#import "BareWindow.h"
#import "Controls.h"
#include "PluginResources.h"
#import "RoundedView.h"
#import "TagButton.h"

@interface RowCounter : NSObject <TagsViewDelegate> {
 @public
  int changes;
}
@end

@implementation RowCounter
- (void)tagsViewDidChangeFrame {
  ++changes;
}
@end

namespace {

// A tags view of 300 by 134 points whose text field stands at y = 108, as in the upload settings window.
class TagsViewTest : public testing::Test {
 protected:
  void SetUp() override {
    UsePluginResources();
    view_ = [[TagsView alloc] initWithFrame:NSMakeRect(0, 0, 300, 134)];
    background_ = [[RoundedView alloc] initWithFrame:NSMakeRect(0, kFieldY, 200, 26)];
    field_ = [[NSTextField alloc] initWithFrame:NSMakeRect(8, 111, 184, 20)];
    [view_ addSubview:background_];
    [view_ addSubview:field_];
    [view_ setTagTextField:field_];
    [view_ setTagTextFieldBackground:background_];
    [view_ awakeFromNib];
  }

  void TearDown() override {
    window_.reset();
    [view_ release];
    [background_ release];
    [field_ release];
  }

  void Add(NSString *text) {
    [field_ setStringValue:text];
    [view_ addTagsButtonDidTouch:nil];
    ExpectInvariant();
  }

  // The i-th tag is the i-th chip's title, and every chip is in the view.
  void ExpectInvariant() {
    ASSERT_EQ([[view_ tags] count], [[view_ tagButtons] count]);
    for (NSUInteger i = 0; i < [[view_ tags] count]; ++i) {
      TagButton *chip = [[view_ tagButtons] objectAtIndex:i];
      EXPECT_TRUE([[chip titleString] isEqualToString:[[view_ tags] objectAtIndex:i]]);
      EXPECT_EQ([chip superview], view_);
    }
    EXPECT_EQ([[view_ subviews] count], [[view_ tagButtons] count] + 2);
    EXPECT_TRUE(NSEqualSizes([view_ frame].size, NSMakeSize(300, 134)));
  }

  // Shows the view in a window, which goes with the test.
  NSWindow *ShowInWindow() {
    window_ = std::make_unique<window_test::BareWindow>(NSMakeSize(300, 134));
    window_->Add(view_);
    return window_->Window();
  }

  std::string Tags() { return [[[view_ tags] componentsJoinedByString:@"|"] UTF8String]; }

  TagButton *Chip(NSUInteger index) { return [[view_ tagButtons] objectAtIndex:index]; }

  static constexpr CGFloat kFieldY = 108;
  TagsView *view_;
  RoundedView *background_;
  NSTextField *field_;
  std::unique_ptr<window_test::BareWindow> window_;
};

}  // namespace

TEST_F(TagsViewTest, TrimsATypedTagButTakesBlanksForOne) {
  Add(@"  a  ");
  EXPECT_EQ(Tags(), "a");
  Add(@"");
  EXPECT_EQ(Tags(), "a");
  Add(@"   ");
  EXPECT_EQ(Tags(), "a|");
  EXPECT_TRUE([[field_ stringValue] isEqualToString:@""]);
}

TEST_F(TagsViewTest, DeletesDuplicatesTogether) {
  for (NSString *tag in @[ @"x", @"y", @"x", @"z" ]) Add(tag);
  TagButton *chip = Chip(2);
  [field_ setStringValue:@"half typed"];
  [view_ deleteTagButton:chip];
  ExpectInvariant();
  EXPECT_EQ(Tags(), "y|z");
  EXPECT_TRUE([[field_ stringValue] isEqualToString:@""]);
  [view_ deleteTagButton:chip];  // a chip that is gone changes nothing
  EXPECT_EQ(Tags(), "y|z");
}

// While the last row stands above the view's bottom edge, all rows stand one row lower.
TEST_F(TagsViewTest, LowersTheRowsWhileThereIsRoom) {
  Add(@"alone");
  EXPECT_EQ(NSMinY([Chip(0) frame]), kFieldY - 2 * 36);
  [background_ setFrameOrigin:NSMakePoint(0, 36)];
  [view_ redrawAllTagButtons];
  EXPECT_EQ(NSMinY([Chip(0) frame]), 0);
}

TEST_F(TagsViewTest, TellsItsDelegateOfRows) {
  RowCounter *counter = [[[RowCounter alloc] init] autorelease];
  [view_ setDelegate:counter];
  [view_ addNewRow];
  [view_ removeRow];
  EXPECT_EQ(counter->changes, 2);
  [view_ setDelegate:nil];
  [view_ setTags:[NSMutableArray arrayWithObjects:@"p", @"q", nil]];
  EXPECT_EQ([[view_ tagButtons] count], 0u);
  [view_ redrawAllTagButtons];
  ExpectInvariant();
  EXPECT_EQ(Tags(), "p|q");
}

TEST_F(TagsViewTest, TabGoesThroughTheChipsAndOn) {
  NSButton *after = [[[NSButton alloc] initWithFrame:NSMakeRect(0, 0, 10, 10)] autorelease];
  [after setAccessibilityLabel:@"after"];
  [view_ setNextKeyView:after];
  [view_ awakeFromNib];
  [field_ setNextKeyView:view_];
  NSWindow *window = ShowInWindow();
  [[window contentView] addSubview:after];
  [window setInitialFirstResponder:field_];
  EXPECT_EQ(window_test::TabOrder(window), "New tag|after");
  for (NSString *tag in @[ @"one", @"two", @"six" ]) Add(tag);
  EXPECT_EQ(window_test::TabOrder(window), "New tag|Remove tag one|Remove tag two|Remove tag six|after");
  while ([[view_ tags] count] > 0) [view_ deleteTagButton:Chip(0)];
  EXPECT_EQ(window_test::TabOrder(window), "New tag|after");
}

// Whoever deletes tags with the keyboard stays among the chips, and is in the field when none is left.
TEST_F(TagsViewTest, TheKeyboardStaysWhereATagWasDeleted) {
  for (NSString *tag in @[ @"one", @"two", @"six" ]) Add(tag);
  NSWindow *window = ShowInWindow();
  [window makeFirstResponder:Chip(1)];
  window_test::PressKey(window, @" ");
  EXPECT_EQ(Tags(), "one|six");
  EXPECT_EQ([window firstResponder], Chip(1));
  window_test::PressKey(window, @" ");
  EXPECT_EQ([window firstResponder], Chip(0));
  window_test::PressKey(window, @" ");
  EXPECT_EQ(Tags(), "");
  EXPECT_NE([field_ currentEditor], nil);
}
