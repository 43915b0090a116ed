// How controls look is compared in WindowPictures_test, where none of them has the keyboard.
#import "LinuxTheme.h"

#include <gtest/gtest.h>

#import "BareWindow.h"

TEST(LinuxTheme, ButtonsShowThatTheyHaveTheFocus) {
  @autoreleasepool {
    window_test::BareWindow window(NSMakeSize(320, 100));
    const NSRect frame = NSMakeRect(10, 10, 200, 28);
    NSButton *check = [[[NSButton alloc] initWithFrame:frame] autorelease];
    [check setButtonType:NSSwitchButton];
    NSPopUpButton *pop_up = [[[NSPopUpButton alloc] initWithFrame:frame pullsDown:NO] autorelease];
    for (NSView *control in @[ check, pop_up ]) {
      window.Add(control);
      NSData *without = [window.Picture() TIFFRepresentation];
      ASSERT_TRUE([window.Window() makeFirstResponder:control]);
      EXPECT_FALSE([[window.Picture() TIFFRepresentation] isEqualToData:without]) << [[control description] UTF8String];
      [window.Window() makeFirstResponder:nil];
      EXPECT_TRUE([[window.Picture() TIFFRepresentation] isEqualToData:without]) << [[control description] UTF8String];
      [control removeFromSuperview];
    }
  }
}
