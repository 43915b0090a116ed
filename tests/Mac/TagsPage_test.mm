#import "TagsPage.h"

#include <gtest/gtest.h>

#import "BareWindow.h"

// As high as the lowest chip asks for, with four points below it, and never lower than what is visible.
TEST(TagsPage, IsAsHighAsItsChipsNeed) {
  NSScrollView *scroll = [[[NSScrollView alloc] initWithFrame:NSMakeRect(0, 0, 200, 100)] autorelease];
  TagsPage *page = [[[TagsPage alloc] initWithFrame:NSMakeRect(0, 0, 180, 100)] autorelease];
  [scroll setDocumentView:page];
  window_test::BareWindow window(NSMakeSize(200, 100));
  window.Add(scroll);
  NSView *tags = [[[NSView alloc] initWithFrame:NSMakeRect(0, 4, 180, 1000)] autorelease];
  [page addSubview:tags];
  const struct {
    CGFloat lowest;  // above the bottom of the view that holds the chips
    CGFloat height;
  } cases[] = {{950, 100}, {908, 100}, {907, 101}, {500, 508}, {910, 100}};
  for (const auto &chips : cases) {
    NSMutableArray *views = [NSMutableArray array];
    for (CGFloat y : {chips.lowest, chips.lowest + 36}) {
      NSView *chip = [[[NSView alloc] initWithFrame:NSMakeRect(0, y, 50, 26)] autorelease];
      [tags addSubview:chip];
      [views addObject:chip];
    }
    [page fitToViews:views];
    EXPECT_TRUE(NSEqualRects([page frame], NSMakeRect(0, 0, 180, chips.height))) << chips.lowest;
    EXPECT_TRUE(NSEqualRects([tags frame], NSMakeRect(0, 4, 180, 1000))) << chips.lowest;
  }
  [page fitToViews:@[]];
  EXPECT_EQ(NSHeight([page frame]), 100) << "without chips";
}
