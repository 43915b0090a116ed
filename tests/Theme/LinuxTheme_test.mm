// How controls look is compared in WindowPictures_test, where none of them has the keyboard.
#import "LinuxTheme.h"

#include <gtest/gtest.h>

#import "BareWindow.h"

namespace {

NSScrollView *InScrollView(NSTextView *text) {
  NSScrollView *view = [[[NSScrollView alloc] initWithFrame:[text frame]] autorelease];
  [view setBorderType:NSBezelBorder];
  [view setDocumentView:text];
  return view;
}

}  // namespace

TEST(LinuxTheme, ControlsShowThatTheyHaveTheFocus) {
  @autoreleasepool {
    window_test::BareWindow window(NSMakeSize(320, 100));
    const NSRect frame = NSMakeRect(10, 10, 200, 28);
    NSButton *check = [[[NSButton alloc] initWithFrame:frame] autorelease];
    [check setButtonType:NSSwitchButton];
    NSPopUpButton *pop_up = [[[NSPopUpButton alloc] initWithFrame:frame pullsDown:NO] autorelease];
    NSTextField *field = [[[NSTextField alloc] initWithFrame:frame] autorelease];
    NSTextView *text = [[[NSTextView alloc] initWithFrame:frame] autorelease];
    for (NSView *control in @[ check, pop_up, field, text ]) {
      window.Add(control == text ? InScrollView(text) : control);
      NSData *without = [window.Picture() TIFFRepresentation];
      ASSERT_TRUE([window.Window() makeFirstResponder:control]);
      EXPECT_FALSE([[window.Picture() TIFFRepresentation] isEqualToData:without]) << [[control description] UTF8String];
      [window.Window() makeFirstResponder:nil];
      EXPECT_TRUE([[window.Window() contentView] needsDisplay]) << [[control description] UTF8String];
      EXPECT_TRUE([[window.Picture() TIFFRepresentation] isEqualToData:without]) << [[control description] UTF8String];
      [[[[window.Window() contentView] subviews] lastObject] removeFromSuperview];
    }
  }
}
