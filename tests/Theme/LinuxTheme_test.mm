// How controls look is compared in WindowPictures_test, where none of them has the keyboard.
#import "LinuxTheme.h"

#include <gtest/gtest.h>

#import "BareWindow.h"
#import "Controls.h"

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

// AppKit takes only a part of the field for changed then, which its edge is not in.
TEST(LinuxTheme, AFieldThatIsLeftWithTabLosesTheFocusOnTheDisplay) {
  @autoreleasepool {
    window_test::BareWindow window(NSMakeSize(220, 60));
    NSTextField *field = [[[NSTextField alloc] initWithFrame:NSMakeRect(10, 10, 90, 28)] autorelease];
    NSTextField *next = [[[NSTextField alloc] initWithFrame:NSMakeRect(110, 10, 90, 28)] autorelease];
    [field setNextKeyView:next];
    window.Add(field);
    window.Add(next);
    const auto edge = [&window, field] {
      [window.Window() displayIfNeeded];
      [field lockFocus];
      NSBitmapImageRep *picture =
          [[[NSBitmapImageRep alloc] initWithFocusedViewRect:NSMakeRect(0, 10, 4, 4)] autorelease];
      [field unlockFocus];
      return [picture TIFFRepresentation];
    };
    NSData *without = edge();
    [window.Window() makeFirstResponder:field];
    EXPECT_FALSE([edge() isEqualToData:without]);
    window_test::PressKey(window.Window(), @"\t");
    EXPECT_EQ([window.Window() firstResponder], [next currentEditor]);
    EXPECT_TRUE([edge() isEqualToData:without]);
  }
}
