// How an alert with a long text looks is compared in WindowPictures_test.
#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>

#include "BareWindow.h"
#include "Controls.h"
#include "WindowScript.h"

using namespace window_test;

@interface AlertEnd : NSObject {
 @public
  NSInteger code;
}
@end

@implementation AlertEnd
- (void)alertDidEnd:(NSAlert *)alert returnCode:(NSInteger)returnCode contextInfo:(void *)contextInfo {
  code = returnCode;
}
@end

namespace {

NSAlert *AlertWithButtons(NSArray *titles) {
  NSAlert *alert = [[[NSAlert alloc] init] autorelease];
  [alert setMessageText:@"Short"];
  for (NSString *title in titles) [alert addButtonWithTitle:title];
  return alert;
}

// What the window manager is asked in the shell's words holds.
bool Holds(const char *question) {
  return system(question) == 0;
}

}  // namespace

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

// The window manager kills the program of a window that it cannot close.
TEST(AlertPanel, ItsCloseButtonIsItsDefaultButton) {
  const BareWindow window(NSMakeSize(200, 100));
  const struct {
    const char *kind;
    std::function<NSInteger(NSAlert *)> run;
  } kinds[] = {{"alert", [](NSAlert *alert) { return [alert runModal]; }},
               {"sheet", [&window](NSAlert *alert) {
                  AlertEnd *end = [[[AlertEnd alloc] init] autorelease];
                  [alert beginSheetModalForWindow:window.Window()
                                    modalDelegate:end
                                   didEndSelector:@selector(alertDidEnd:returnCode:contextInfo:)
                                      contextInfo:NULL];
                  return end->code;
                }}};
  for (const auto &kind : kinds) {
    NSInteger code = 0;
    RunWithScript(
        [&] {
          code = kind.run(AlertWithButtons(@[ @"Try again", @"Leave it" ]));
        },
        [](Script &actions) {
          actions.WaitFor("the alert", [] { return IsModal(AlertPanel()); });
          actions.WaitFor("the window manager", [] { return Holds("wmctrl -c Alert"); });
          actions.WaitFor("the end of the alert", [] { return AlertPanel() == nil; });
        });
    EXPECT_EQ(code, NSAlertFirstButtonReturn) << kind.kind;
  }
}

TEST(AlertPanel, ComesUpAboveFloatingWindows) {
  BareWindow windows[] = {BareWindow(NSMakeSize(700, 500)), BareWindow(NSMakeSize(700, 500))};
  for (BareWindow &window : windows) {
    [window.Window() setLevel:NSFloatingWindowLevel];
    [window.Window() orderFront:nil];
  }
  RunWithScript([] { [AlertWithButtons(@[ @"OK" ]) runModal]; },
                [](Script &actions) {
                  actions.WaitFor("the alert", [] { return IsModal(AlertPanel()); });
                  actions.WaitFor("the alert above all", [] {
                    return Holds("xprop -root _NET_CLIENT_LIST_STACKING | grep -o '[^ ]*$' |"
                                 "xargs -I{} xprop -id {} WM_NAME | grep -q Alert");
                  });
                  actions.OnMain([] { DismissAlert(); });
                });
}
