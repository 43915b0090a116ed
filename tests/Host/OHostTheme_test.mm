#import <Cocoa/Cocoa.h>
#import <GNUstepGUI/GSTheme.h>

#include <gtest/gtest.h>

#import "OHostTheme.h"

namespace {

// A window on the screen, with what is added to it.
class OHostThemeTest : public testing::Test {
 protected:
  void SetUp() override {
    _window = [[NSPanel alloc] initWithContentRect:NSMakeRect(100, 100, 320, 200)
                                         styleMask:NSTitledWindowMask
                                           backing:NSBackingStoreBuffered
                                             defer:NO];
    [_window setReleasedWhenClosed:NO];
    [_window makeKeyAndOrderFront:nil];
  }
  void TearDown() override {
    [_window close];
    [_window release];
  }

  // What the window shows in this frame, in the content's coordinates.
  NSBitmapImageRep *Picture(NSRect frame) {
    NSView *content = [_window contentView];
    [content setNeedsDisplay:YES];
    [_window display];
    [content lockFocus];
    NSBitmapImageRep *picture = [[[NSBitmapImageRep alloc] initWithFocusedViewRect:frame] autorelease];
    [content unlockFocus];
    return picture;
  }

  NSColor *ColorAt(NSBitmapImageRep *picture, NSInteger x, NSInteger y) {
    return [[picture colorAtX:x y:y] colorUsingColorSpaceName:NSCalibratedRGBColorSpace];
  }

  bool LookDifferent(NSBitmapImageRep *one, NSBitmapImageRep *other) {
    return ![[one TIFFRepresentation] isEqualToData:[other TIFFRepresentation]];
  }

  NSButton *AddButton(NSRect frame, NSString *title) {
    NSButton *button = [[[NSButton alloc] initWithFrame:frame] autorelease];
    [button setBezelStyle:NSRoundedBezelStyle];
    [button setTitle:title];
    [[_window contentView] addSubview:button];
    return button;
  }

  NSPanel *_window = nil;
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
      [[_window contentView] addSubview:control];
      NSBitmapImageRep *without = Picture([control frame]);
      // Beside the text, so that no caret is what makes the difference; the bezel of a button begins within its frame.
      NSRect edge = [control frame];
      edge.size.width = [control isKindOfClass:[NSButton class]] ? 8 : 3;
      NSBitmapImageRep *edge_without = Picture(edge);
      ASSERT_TRUE([_window makeFirstResponder:control == scroll ? text : control]);
      EXPECT_TRUE(LookDifferent(without, Picture([control frame]))) << [[control description] UTF8String];
      EXPECT_TRUE(LookDifferent(edge_without, Picture(edge))) << [[control description] UTF8String];
      [_window makeFirstResponder:nil];
      EXPECT_FALSE(LookDifferent(without, Picture([control frame]))) << [[control description] UTF8String];
      [control removeFromSuperview];
    }
  }
}

TEST_F(OHostThemeTest, OnlyTheDefaultButtonIsBlue) {
  @autoreleasepool {
    NSButton *plain = AddButton(NSMakeRect(10, 10, 100, 24), @"");
    NSButton *standard = AddButton(NSMakeRect(120, 10, 100, 24), @"");
    [standard setKeyEquivalent:@"\r"];
    EXPECT_GT([ColorAt(Picture([plain frame]), 50, 12) redComponent], 0.9);
    EXPECT_LT([ColorAt(Picture([standard frame]), 50, 12) redComponent], 0.3);
    [standard setEnabled:NO];
    EXPECT_GT([ColorAt(Picture([standard frame]), 50, 12) redComponent], 0.8);
  }
}

TEST_F(OHostThemeTest, CornersOfFieldsShowWhatIsBehindThem) {
  @autoreleasepool {
    [_window setBackgroundColor:[NSColor redColor]];
    NSTextField *field = [[[NSTextField alloc] initWithFrame:NSMakeRect(10, 10, 100, 24)] autorelease];
    [[_window contentView] addSubview:field];
    NSBitmapImageRep *once = Picture([field frame]);
    EXPECT_GT([ColorAt(once, 0, 0) redComponent], 0.9);
    EXPECT_LT([ColorAt(once, 0, 0) greenComponent], 0.5);
    // Drawn again and again without what is behind it, the soft edges of its corners would get darker.
    for (int i = 0; i < 10; ++i) {
      [field setNeedsDisplay:YES];
      [_window displayIfNeeded];
    }
    [[_window contentView] lockFocus];
    NSBitmapImageRep *often = [[[NSBitmapImageRep alloc] initWithFocusedViewRect:[field frame]] autorelease];
    [[_window contentView] unlockFocus];
    EXPECT_FALSE(LookDifferent(once, often));
  }
}

TEST_F(OHostThemeTest, ALongTitleEndsBeforeThePopUpButtonsChevrons) {
  @autoreleasepool {
    const NSRect frame = NSMakeRect(10, 10, 160, 26);
    NSPopUpButton *button = [[[NSPopUpButton alloc] initWithFrame:frame pullsDown:NO] autorelease];
    [button addItemWithTitle:@"short"];
    [[_window contentView] addSubview:button];
    const NSRect chevrons = NSMakeRect(NSMaxX(frame) - 22, NSMinY(frame), 22, NSHeight(frame));
    NSBitmapImageRep *with_short_title = Picture(chevrons);
    [button addItemWithTitle:@"a title that is far longer than its button and would run on over its edge"];
    [button selectItemAtIndex:1];
    EXPECT_FALSE(LookDifferent(with_short_title, Picture(chevrons)));
  }
}

TEST_F(OHostThemeTest, ScrollersHaveAKnobOnlyForTextThatIsOutOfSight) {
  @autoreleasepool {
    NSScroller *scroller = [[[NSScroller alloc] initWithFrame:NSMakeRect(10, 10, 12, 100)] autorelease];
    [[_window contentView] addSubview:scroller];
    [scroller setEnabled:YES];
    [scroller setKnobProportion:0.5];
    [scroller setDoubleValue:1];
    const NSRect knob = [scroller rectForPart:NSScrollerKnob];
    EXPECT_EQ(NSMaxY(knob), 100) << "at the end the knob reaches the scroller's end";
    EXPECT_EQ(NSHeight(knob), 50);
    EXPECT_TRUE(NSIsEmptyRect([scroller rectForPart:NSScrollerIncrementLine]));
    EXPECT_TRUE(NSIsEmptyRect([scroller rectForPart:NSScrollerDecrementLine]));
    [scroller setKnobProportion:0.99];
    EXPECT_TRUE(NSIsEmptyRect([scroller rectForPart:NSScrollerKnob]));
    [scroller setKnobProportion:0.001];
    EXPECT_GE(NSHeight([scroller rectForPart:NSScrollerKnob]), 20) << "of a very long text the knob can be caught";
  }
}
