#import "LinuxTheme.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#import "BareWindow.h"
#import "Controls.h"
#import "DrawnText.h"

using window_test::BareWindow;

namespace {

// The darkness of each column of that part of the picture, from the first column with ink to the last.
std::vector<int> InkOf(NSBitmapImageRep *picture, NSRect part) {
  std::vector<int> columns;
  size_t used = 0;
  for (NSInteger x = static_cast<NSInteger>(NSMinX(part)); x < NSMaxX(part); ++x) {
    int darkness = 0;
    for (NSInteger y = static_cast<NSInteger>(NSMinY(part)); y < NSMaxY(part); ++y) {
      darkness += Darkness(picture, x, y);
    }
    if (darkness > 0 || !columns.empty()) columns.push_back(darkness);
    if (darkness > 0) used = columns.size();
  }
  columns.resize(used);
  return columns;
}

// What the text looks like where there is room enough for it.
std::vector<int> InkOf(NSString *text, NSFont *font) {
  NSDictionary *attributes = @{NSFontAttributeName : font, NSForegroundColorAttributeName : [NSColor controlTextColor]};
  NSAttributedString *drawn = [[[NSAttributedString alloc] initWithString:text attributes:attributes] autorelease];
  const NSRect all = NSMakeRect(0, 0, 800, 40);
  return InkOf(DrawnText(drawn, all.size, all), all);
}

}  // namespace

TEST(LinuxTheme, StaysWhenDefaultsChange) {
  [[NSUserDefaults standardUserDefaults] setObject:@"1" forKey:@"OrvaneTestDefault"];
  [[NSNotificationCenter defaultCenter] postNotificationName:NSUserDefaultsDidChangeNotification
                                                      object:[NSUserDefaults standardUserDefaults]];
  EXPECT_TRUE([[GSTheme theme] isKindOfClass:[LinuxTheme class]]);
  [[NSUserDefaults standardUserDefaults] removeObjectForKey:@"OrvaneTestDefault"];
}

// Boxes and question marks for what no font has would all look the same.
TEST(LinuxTheme, HasFontsForLatinCyrillicChineseAndJapanese) {
  @autoreleasepool {
    for (NSFont *font in @[ [NSFont systemFontOfSize:13], [NSFont boldSystemFontOfSize:13] ]) {
      for (NSString *name in @[ @"äł", @"Жя", @"中文", @"水與", @"カメ", @"ひら" ]) {
        const auto one = InkOf([name substringToIndex:1], font);
        const auto other = InkOf([name substringFromIndex:1], font);
        EXPECT_GE(one.size(), 3u) << [name UTF8String];
        EXPECT_NE(one, other) << [name UTF8String];
        EXPECT_NE(one, InkOf(@"?", font)) << [name UTF8String];
        EXPECT_NE(other, InkOf(@"?", font)) << [name UTF8String];
      }
    }
  }
}

TEST(LinuxTheme, MenusOfPopUpButtonsShowWholeNames) {
  @autoreleasepool {
    BareWindow window(NSMakeSize(300, 100));
    const NSRect frame = NSMakeRect(10, 60, 120, 26);
    NSPopUpButton *button = [[[NSPopUpButton alloc] initWithFrame:frame pullsDown:NO] autorelease];
    NSArray *names = @[ @"Select...", @"01", @"v1", @"2024", @"秋", @"Rohschnitt nach der Abnahme vom 14. Januar" ];
    [button addItemsWithTitles:names];
    window.Add(button);
    [window.Window() makeKeyAndOrderFront:nil];
    [window.Window() makeFirstResponder:button];
    window_test::PressKey(window.Window(), @" ");
    NSMenuView *menu = static_cast<NSMenuView *>([[button menu] menuRepresentation]);
    ASSERT_TRUE([[menu window] isVisible]);
    NSBitmapImageRep *picture = window_test::PictureOf([menu window]);
    for (NSUInteger i = 1; i < [names count]; ++i) {  // the first one is chosen, and white
      const NSRect row = [menu convertRect:[menu rectOfItemAtIndex:static_cast<NSInteger>(i)] toView:nil];
      const NSRect shown = NSMakeRect(1, [picture pixelsHigh] - NSMaxY(row), [picture pixelsWide] - 2, NSHeight(row));
      NSString *name = [names objectAtIndex:i];
      NSFont *font = [[menu menuItemCellForItemAtIndex:static_cast<NSInteger>(i)] font];
      EXPECT_EQ(InkOf(picture, NSInsetRect(shown, 0, 2)), InkOf(name, font)) << [name UTF8String];
    }
    window_test::PressKey(window.Window(), @"\033");
  }
}

TEST(LinuxTheme, ButtonsShowThatTheyHaveTheFocus) {
  @autoreleasepool {
    BareWindow window(NSMakeSize(320, 100));
    const NSRect frame = NSMakeRect(10, 10, 200, 28);
    NSButton *check = [[[NSButton alloc] initWithFrame:frame] autorelease];
    [check setButtonType:NSSwitchButton];
    NSButton *push = [[[NSButton alloc] initWithFrame:frame] autorelease];
    [push setBezelStyle:NSRoundedBezelStyle];
    NSPopUpButton *pop_up = [[[NSPopUpButton alloc] initWithFrame:frame pullsDown:NO] autorelease];
    for (NSView *control in @[ push, check, pop_up ]) {
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
