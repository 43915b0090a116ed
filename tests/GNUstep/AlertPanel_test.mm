// How alerts look is compared in WindowPictures_test.
#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

#include <cstdlib>

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

// The window manager kills the program of a window that it cannot close.
TEST(AlertPanel, ItsCloseButtonIsItsDefaultButton) {
  const BareWindow window(NSMakeSize(200, 100));
  AlertEnd *end = [[[AlertEnd alloc] init] autorelease];
  RunWithScript(
      [&] {
        NSAlert *alert = AlertWithButtons(@[ @"Try again", @"Leave it" ]);
        [alert beginSheetModalForWindow:window.Window()
                          modalDelegate:end
                         didEndSelector:@selector(alertDidEnd:returnCode:contextInfo:)
                            contextInfo:NULL];
      },
      [](Script &actions) {
        actions.WaitFor("the alert", [] { return IsModal(AlertPanel()); });
        actions.WaitFor("the window manager", [] { return Holds("wmctrl -c Alert"); });
        actions.WaitFor("the end of the alert", [] { return AlertPanel() == nil; });
      });
  EXPECT_EQ(end->code, NSAlertFirstButtonReturn);
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
