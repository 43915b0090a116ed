#import <Cocoa/Cocoa.h>
#include <gtest/gtest.h>

TEST(AccessibilityLabel, IsCopiedAndGoesWithItsView) {
  // Two views at one address: what the first one was called must not be said of the second.
  for (int i = 0; i < 100; ++i) {
    NSMutableString *text = [NSMutableString stringWithString:@"Title"];
    NSView *view = [[NSView alloc] initWithFrame:NSZeroRect];
    ASSERT_EQ([view accessibilityLabel], nil) << i;
    [view setAccessibilityLabel:text];
    [text setString:@"changed"];
    ASSERT_TRUE([[view accessibilityLabel] isEqualToString:@"Title"]);
    [view release];
  }
}
