#import <Cocoa/Cocoa.h>
#import <GNUstepGUI/GSTheme.h>

#include <gtest/gtest.h>

#import "BareWindow.h"
#import "OHostTheme.h"

namespace {

class OHostThemeTest : public testing::Test {
 protected:
  // What the window shows in this frame, in the content's coordinates.
  NSBitmapImageRep *Shown(NSRect frame) {
    [content_ lockFocus];
    NSBitmapImageRep *picture = [[[NSBitmapImageRep alloc] initWithFocusedViewRect:frame] autorelease];
    [content_ unlockFocus];
    return picture;
  }

  // The same after everything was drawn again.
  NSBitmapImageRep *Drawn(NSRect frame) {
    [bare_.Window() display];
    return Shown(frame);
  }

  bool LookDifferent(NSBitmapImageRep *one, NSBitmapImageRep *other) {
    return ![[one TIFFRepresentation] isEqualToData:[other TIFFRepresentation]];
  }

  window_test::BareWindow bare_{NSMakeSize(320, 200)};
  NSView *content_ = [bare_.Window() contentView];
};

}  // namespace

TEST_F(OHostThemeTest, StaysWhenDefaultsChange) {
  EXPECT_TRUE([[GSTheme theme] isKindOfClass:[OHostTheme class]]);
  [[NSUserDefaults standardUserDefaults] setObject:@"1" forKey:@"OrvaneTestDefault"];
  [[NSNotificationCenter defaultCenter] postNotificationName:NSUserDefaultsDidChangeNotification
                                                      object:[NSUserDefaults standardUserDefaults]];
  EXPECT_TRUE([[GSTheme theme] isKindOfClass:[OHostTheme class]]);
  [[NSUserDefaults standardUserDefaults] removeObjectForKey:@"OrvaneTestDefault"];
}

TEST_F(OHostThemeTest, EveryKindOfControlShowsThatItHasTheFocus) {
  @autoreleasepool {
    const NSRect frame = NSMakeRect(10, 10, 200, 28);
    NSScrollView *scroll = [[[NSScrollView alloc] initWithFrame:NSMakeRect(10, 10, 200, 80)] autorelease];
    [scroll setBorderType:NSBezelBorder];
    NSTextView *text = [[[NSTextView alloc] initWithFrame:NSMakeRect(0, 0, 190, 70)] autorelease];
    [scroll setDocumentView:text];
    NSButton *check = [[[NSButton alloc] initWithFrame:frame] autorelease];
    [check setButtonType:NSSwitchButton];
    NSButton *push = [[[NSButton alloc] initWithFrame:frame] autorelease];
    [push setBezelStyle:NSRoundedBezelStyle];
    NSPopUpButton *pop_up = [[[NSPopUpButton alloc] initWithFrame:frame pullsDown:NO] autorelease];
    [pop_up addItemWithTitle:@"One"];
    NSTextField *field = [[[NSTextField alloc] initWithFrame:frame] autorelease];
    for (NSView *control in @[ push, check, pop_up, field, scroll ]) {
      [content_ addSubview:control];
      // Beside the text, so that no caret is what makes the difference; the bezel of a button begins within its frame.
      NSRect edge = [control frame];
      edge.size.width = [control isKindOfClass:[NSButton class]] ? 8 : 3;
      NSBitmapImageRep *without = Drawn(edge);
      ASSERT_TRUE([bare_.Window() makeFirstResponder:control == scroll ? text : control]);
      EXPECT_TRUE(LookDifferent(without, Drawn(edge))) << [[control description] UTF8String];
      [bare_.Window() makeFirstResponder:nil];
      EXPECT_FALSE(LookDifferent(without, Drawn(edge))) << [[control description] UTF8String];
      [control removeFromSuperview];
    }
  }
}

TEST_F(OHostThemeTest, CornersOfFieldsShowWhatIsBehindThem) {
  @autoreleasepool {
    NSTextField *field = [[[NSTextField alloc] initWithFrame:NSMakeRect(10, 10, 100, 24)] autorelease];
    [content_ addSubview:field];
    NSBitmapImageRep *once = Drawn([field frame]);
    EXPECT_GT([[once colorAtX:0 y:0] redComponent], 0.9);
    EXPECT_LT([[once colorAtX:0 y:0] greenComponent], 0.5);
    // Drawn again and again without what is behind it, the soft edges of its corners would get darker.
    for (int i = 0; i < 10; ++i) {
      [field setNeedsDisplay:YES];
      [bare_.Window() displayIfNeeded];
    }
    EXPECT_FALSE(LookDifferent(once, Shown([field frame])));
  }
}
