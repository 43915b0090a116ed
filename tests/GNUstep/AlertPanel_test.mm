// How an alert with a long text looks is compared in WindowPictures_test.
#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

#include "Controls.h"
#include "WindowScript.h"

using namespace window_test;

TEST(AlertPanel, OfTextsHigherThanTheScreenItShowsAPartThatScrolls) {
  @autoreleasepool {
    NSString *line = @"one line of many\n";
    NSString *text = [@"" stringByPaddingToLength:200 * [line length] withString:line startingAtIndex:0];
    RunWithScript(
        [text] {
          NSAlert *alert = [[[NSAlert alloc] init] autorelease];
          [alert setMessageText:@"Long"];
          [alert setInformativeText:text];
          [alert addButtonWithTitle:@"OK"];
          [alert runModal];
        },
        [text](Script &actions) {
          actions.WaitFor("the alert", [] { return IsModal(AlertPanel()); });
          actions.OnMain([text] {
            NSWindow *panel = AlertPanel();
            const NSRect shown = [[panel contentView] bounds];
            EXPECT_LE(NSHeight([panel frame]), NSHeight([[NSScreen mainScreen] frame]));
            NSTextField *title = FieldWithText(panel, @"Long");
            EXPECT_TRUE(NSContainsRect(shown, [title convertRect:[title bounds] toView:nil])) << "the beginning";
            EXPECT_TRUE(NSContainsRect(shown, [ButtonTitled(panel, @"OK") frame]));
            NSTextField *field = FieldWithText(panel, text);
            EXPECT_TRUE([[field enclosingScrollView] hasVerticalScroller]);
            EXPECT_GE(NSHeight([field frame]),
                      [[field cell] cellSizeForBounds:NSMakeRect(0, 0, NSWidth([field frame]), 1e6)].height);
            DismissAlert();
          });
        });
  }
}
