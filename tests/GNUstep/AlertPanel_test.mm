#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

#include <functional>

#include "Controls.h"
#include "WindowScript.h"

namespace {

NSString *Repeated(NSString *text, NSUInteger times) {
  return [@"" stringByPaddingToLength:[text length] * times withString:text startingAtIndex:0];
}

// Runs an alert and looks at its panel.
void ShowAlert(NSString *message, NSString *informative, const std::function<void(NSWindow *)> &look) {
  window_test::RunWithScript(
      [&] {
        NSAlert *alert = [[[NSAlert alloc] init] autorelease];
        [alert setMessageText:message];
        [alert setInformativeText:informative];
        [alert addButtonWithTitle:@"OK"];
        [alert runModal];
      },
      [&](window_test::Script &script) {
        script.WaitFor("the alert", [] { return window_test::IsModal(window_test::AlertPanel()); });
        script.OnMain([&] { look(window_test::AlertPanel()); });
        script.Post([] { window_test::DismissAlert(); });
      });
}

// The frame of the field with the text, in the window's coordinates, when it shows the whole text.
NSRect FrameOfWholeText(NSWindow *panel, NSString *text) {
  NSTextField *field = window_test::FieldWithText(panel, text);
  EXPECT_TRUE(field) << [text UTF8String];
  const NSSize room = NSMakeSize(NSWidth([field frame]) - 4, 1e6);
  const NSRect needed = [[field attributedStringValue] boundingRectWithSize:room
                                                                    options:NSStringDrawingUsesLineFragmentOrigin];
  EXPECT_GE(NSHeight([field frame]), NSHeight(needed)) << [text UTF8String];
  return [field convertRect:[field bounds] toView:nil];
}

}  // namespace

TEST(AlertPanel, TextsOfAnyLengthFitBelowEachOther) {
  @autoreleasepool {
    for (NSString *text in @[
           @"Please enter a title.", Repeated(@"ten chars ", 60), Repeated(@"withoutanyblank", 20),
           @"First line\n\nThird line"
         ]) {
      NSString *informative = [text stringByAppendingString:@"!"];
      ShowAlert(text, informative, [&](NSWindow *panel) {
        const NSRect above = FrameOfWholeText(panel, text);
        const NSRect below = FrameOfWholeText(panel, informative);
        EXPECT_LE(NSMaxY(below), NSMinY(above));
        EXPECT_TRUE(NSContainsRect([[panel contentView] bounds], NSUnionRect(above, below)));
        EXPECT_LE(NSMaxY([window_test::ButtonTitled(panel, @"OK") frame]), NSMinY(below));
        EXPECT_LE(NSWidth([panel frame]), 560) << "a long text is wrapped";
      });
    }
  }
}

TEST(AlertPanel, OfTextsHigherThanTheScreenItShowsAPartThatScrolls) {
  @autoreleasepool {
    NSString *text = Repeated(@"one line of many\n", 200);
    ShowAlert(@"Long", text, [&](NSWindow *panel) {
      EXPECT_LE(NSHeight([panel frame]), NSHeight([[NSScreen mainScreen] frame]));
      EXPECT_TRUE([[window_test::FieldWithText(panel, text) enclosingScrollView] hasVerticalScroller]);
      FrameOfWholeText(panel, text);
      const NSRect title = FrameOfWholeText(panel, @"Long");
      EXPECT_TRUE(NSContainsRect([[panel contentView] bounds], title)) << "the beginning is shown";
    });
  }
}
