#include <gtest/gtest.h>

#import "NSString+CompareToVersion.h"
#import "NSString+TrimmingAdditions.h"

TEST(NSStringCompareToVersion, ComparesComponentsAsNumbers) {
  const struct {
    NSString *left, *right;
    NSComparisonResult expected;
  } cases[] = {
      {@"1.2", @"1.1", NSOrderedDescending},   {@"1.1", @"1.2", NSOrderedAscending},
      {@"1.1", @"1.1", NSOrderedSame},         {@"1.10", @"1.9", NSOrderedDescending},
      {@"1.1.1", @"1.1", NSOrderedDescending}, {@"1.1.0", @"1.1", NSOrderedSame},
      {@"error", @"1.1", NSOrderedAscending},  {@"0", nil, NSOrderedSame},
      {@"1.1", nil, NSOrderedDescending},      {@"1.01", @"1.1", NSOrderedSame},
      {@"1.1\n", @"1.1", NSOrderedSame},       {@"1..2", @"1.0.2", NSOrderedSame},
      {@"1.2rc1", @"1.2", NSOrderedSame},      {@" +2", @"1.9.9", NSOrderedDescending},
  };
  for (const auto &item : cases) {
    EXPECT_EQ([item.left compareToVersion:item.right], item.expected)
        << [item.left UTF8String] << " against " << (item.right ? [item.right UTF8String] : "nil");
  }
}

TEST(NSStringCompareToVersion, PredicatesAgreeWithTheOrder) {
  EXPECT_TRUE([@"1.2" isNewerThanVersion:@"1.1"] && ![@"1.1" isNewerThanVersion:@"1.1"]);
  EXPECT_TRUE([@"1.0" isOlderThanVersion:@"1.1"] && ![@"1.1" isOlderThanVersion:@"1.1"]);
  EXPECT_TRUE([@"1.1.0" isEqualToVersion:@"1.1"] && ![@"1.2" isEqualToVersion:@"1.1"]);
  EXPECT_TRUE([@"1.1" isEqualOrOlderThanVersion:@"1.1"] && ![@"1.2" isEqualOrOlderThanVersion:@"1.1"]);
  EXPECT_TRUE([@"1.1" isEqualOrNewerThanVersion:@"1.1"] && ![@"1.0" isEqualOrNewerThanVersion:@"1.1"]);
}

TEST(NSStringTrimmingAdditions, TrimsOneEnd) {
  NSCharacterSet *blanks = [NSCharacterSet whitespaceAndNewlineCharacterSet];
  const struct {
    NSString *text, *without_leading, *without_trailing;
  } cases[] = {
      {@"  tag \n", @"tag \n", @"  tag"},
      {@"", @"", @""},
      {@" \t\n", @"", @""},
      {@"a b", @"a b", @"a b"},
      {@"\U0001F3AC ", @"\U0001F3AC ", @"\U0001F3AC"},
  };
  for (const auto &item : cases) {
    EXPECT_TRUE([[item.text stringByTrimmingLeadingCharactersInSet:blanks] isEqualToString:item.without_leading]);
    EXPECT_TRUE([[item.text stringByTrimmingTrailingCharactersInSet:blanks] isEqualToString:item.without_trailing]);
  }
  // Longer than what is scanned on the stack.
  NSString *blank = [@"" stringByPaddingToLength:5000 withString:@" " startingAtIndex:0];
  NSString *padded = [[blank stringByAppendingString:@"x"] stringByAppendingString:blank];
  EXPECT_EQ([[padded stringByTrimmingLeadingCharactersInSet:blanks] length], 5001u);
  EXPECT_EQ([[padded stringByTrimmingTrailingCharactersInSet:blanks] length], 5001u);
}
