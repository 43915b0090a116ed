// How each background looks is compared with the gallery's picture.
#import "RoundedView.h"

#include <gtest/gtest.h>

#import "BareWindow.h"
#include "PluginResources.h"

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
