#import <Cocoa/Cocoa.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "Controls.h"
#include "WindowScript.h"

namespace {

NSString *Repeated(NSString *text, int times) {
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

NSRect FrameInWindow(NSView *view) {
  return [view convertRect:[view bounds] toView:nil];
}

// Whether the field is as high as its text is at the field's width.
bool ShowsAllItsText(NSTextField *field) {
  const NSSize room = NSMakeSize(NSWidth([field frame]) - 4, 1e6);
  const NSRect text = [[field attributedStringValue] boundingRectWithSize:room
                                                                  options:NSStringDrawingUsesLineFragmentOrigin];
  return NSHeight([field frame]) >= NSHeight(text);
}

}  // namespace

TEST(AlertPanel, TextsOfAnyLengthFitBelowEachOther) {
  @autoreleasepool {
    NSString *texts[] = {@"Please enter a title.", Repeated(@"ten chars ", 60), Repeated(@"withoutanyblank", 20),
                         @"First line\n\nThird line"};
    for (NSString *text : texts) {
      NSString *informative = [text stringByAppendingString:@"!"];
      ShowAlert(text, informative, [&](NSWindow *panel) {
        NSTextField *message = window_test::FieldWithText(panel, text);
        NSTextField *below = window_test::FieldWithText(panel, informative);
        ASSERT_TRUE(message && below) << [text UTF8String];
        EXPECT_TRUE(ShowsAllItsText(message)) << [text UTF8String];
        EXPECT_TRUE(ShowsAllItsText(below)) << [text UTF8String];
        EXPECT_LE(NSMaxY(FrameInWindow(below)), NSMinY(FrameInWindow(message)));
        const NSRect inside = [[panel contentView] bounds];
        EXPECT_TRUE(NSContainsRect(inside, FrameInWindow(message)));
        EXPECT_TRUE(NSContainsRect(inside, FrameInWindow(below)));
        NSButton *ok = window_test::ButtonTitled(panel, @"OK");
        EXPECT_LE(NSMaxY(FrameInWindow(ok)), NSMinY(FrameInWindow(below)));
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
      NSTextField *field = window_test::FieldWithText(panel, text);
      ASSERT_TRUE(field);
      EXPECT_TRUE(ShowsAllItsText(field));
      NSScrollView *scroll = [field enclosingScrollView];
      ASSERT_TRUE(scroll);
      EXPECT_LT(NSHeight([[scroll contentView] bounds]), NSHeight([field frame]));
      NSTextField *title = window_test::FieldWithText(panel, @"Long");
      EXPECT_TRUE(NSContainsRect([[panel contentView] bounds], FrameInWindow(title))) << "the beginning is shown";
    });
  }
}

TEST(AlertPanel, ButtonsStandInARowAtTheRight) {
  @autoreleasepool {
    NSInteger pressed = 0;
    window_test::RunWithScript(
        [&] {
          NSAlert *alert = [[[NSAlert alloc] init] autorelease];
          [alert setMessageText:@"Save the changes?"];
          for (NSString *title in @[ @"Save", @"Cancel", @"Don't Save at All" ]) [alert addButtonWithTitle:title];
          pressed = [alert runModal];
        },
        [&](window_test::Script &script) {
          script.WaitFor("the alert", [] { return window_test::IsModal(window_test::AlertPanel()); });
          script.OnMain([] {
            NSWindow *panel = window_test::AlertPanel();
            // Frames may touch: there is room beside the bezel in each.
            CGFloat left = NSWidth([[panel contentView] bounds]);
            for (NSString *title in @[ @"Save", @"Cancel", @"Don't Save at All" ]) {
              NSButton *button = window_test::ButtonTitled(panel, title);
              ASSERT_TRUE(button) << [title UTF8String];
              EXPECT_LE(NSMaxX([button frame]), left) << [title UTF8String];
              EXPECT_GT(NSWidth([button frame]), [[button attributedTitle] size].width) << [title UTF8String];
              left = NSMinX([button frame]);
            }
            EXPECT_GT(left, 0);
          });
          script.Post([] { window_test::Press(window_test::ButtonTitled(window_test::AlertPanel(), @"Cancel")); });
        });
    EXPECT_EQ(pressed, NSAlertSecondButtonReturn);
  }
}
