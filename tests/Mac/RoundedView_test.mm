// How each background looks is compared with the gallery's picture.
#import "RoundedView.h"

#include <gtest/gtest.h>

#import "BareWindow.h"
#include "PluginResources.h"

namespace {

// What the view of that type shows in a window.
NSData *Shown(int type) {
  window_test::BareWindow window(NSMakeSize(60, 40));
  RoundedView *view = [[[RoundedView alloc] initWithFrame:NSMakeRect(0, 0, 60, 40)] autorelease];
  if (type != 0) [view setType:type];
  window.Add(view);
  NSBitmapImageRep *picture = window.Picture();
  return [NSData dataWithBytes:[picture bitmapData]
                        length:static_cast<NSUInteger>([picture bytesPerRow] * [picture pixelsHigh])];
}

}  // namespace

TEST(RoundedView, DrawsItsNineteenTypesAndNothingForOthers) {
  UsePluginResources();
  EXPECT_EQ([[[[RoundedView alloc] initWithFrame:NSZeroRect] autorelease] type], 0);
  NSData *nothing = Shown(-1);
  EXPECT_TRUE([Shown(19) isEqual:nothing]);
  NSMutableSet *pictures = [NSMutableSet setWithObject:nothing];
  for (int type = 0; type < 19; ++type) [pictures addObject:Shown(type)];
  EXPECT_EQ([pictures count], 20u) << "no two types look the same, and none is empty";
}

// A text area keeps its corners at every size.
TEST(RoundedView, StretchesNineSlicesInBothDirections) {
  UsePluginResources();
  window_test::BareWindow window(NSMakeSize(300, 200));
  RoundedView *view = [[[RoundedView alloc] initWithFrame:NSMakeRect(0, 0, 300, 200)] autorelease];
  [view setType:RoundedViewTypeTextFieldWhiteBig];
  window.Add(view);
  NSBitmapImageRep *picture = window.Picture();
  // A row and a column through the middle are the same all along between the caps.
  for (NSInteger at = 40; at < 160; ++at) {
    EXPECT_TRUE([[picture colorAtX:at y:0] isEqual:[picture colorAtX:150 y:0]]) << at;
    EXPECT_TRUE([[picture colorAtX:0 y:at] isEqual:[picture colorAtX:0 y:100]]) << at;
    EXPECT_TRUE([[picture colorAtX:at y:at] isEqual:[picture colorAtX:150 y:100]]) << at;
  }
  EXPECT_FALSE([[picture colorAtX:0 y:100] isEqual:[picture colorAtX:150 y:100]]) << "there is an edge";
}

TEST(RoundedView, ShowsANewTypeWithoutBeingAsked) {
  UsePluginResources();
  window_test::BareWindow window(NSMakeSize(60, 40));
  RoundedView *view = [[[RoundedView alloc] initWithFrame:NSMakeRect(0, 0, 60, 40)] autorelease];
  window.Add(view);
  [window.Window() display];
  ASSERT_FALSE([view needsDisplay]);
  [view setType:RoundedViewTypeTextFieldWhiteBig];
  EXPECT_TRUE([view needsDisplay]);
}
