#import "PlatformJson.h"

#include <gtest/gtest.h>

#include <string>

namespace {

id Parse(const std::string &text) {
  return ParseJson(text.data(), text.size(), 0);
}

std::string Repeated(const std::string &text, size_t times) {
  std::string all;
  for (size_t i = 0; i < times; ++i) all += text;
  return all;
}

std::string Nested(size_t depth) {
  return Repeated("[", depth) + Repeated("]", depth);
}

}  // namespace

TEST(PlatformJson, RefusesWhatIsTooDeep) {
  EXPECT_NE(Parse(Nested(kMaxJsonDepth)), nil);
  EXPECT_EQ(Parse(Nested(kMaxJsonDepth + 1)), nil);
  EXPECT_EQ(Parse(Nested(5000000)), nil);
  EXPECT_EQ(Parse(Repeated("{\"a\":", 50000)), nil);
  EXPECT_NE(Parse("[" + Repeated("[],", 5000) + "[]]"), nil) << "beside each other";
  // Brackets in texts are none.
  EXPECT_NE(Parse("[\"" + Repeated("[{\\\"\\\\", 5000) + "\"]"), nil);
}

TEST(PlatformJson, RefusesTooManyValues) {
  for (const std::string value : {"1", "[]", "{ }"}) {
    EXPECT_EQ([Parse("[" + Repeated(value + ",", kMaxJsonValues - 2) + value + "]") count], kMaxJsonValues - 1);
    EXPECT_EQ(Parse("[" + Repeated(value + ",", kMaxJsonValues - 1) + value + "]"), nil);
  }
  EXPECT_EQ(Parse("[" + Repeated("[1],", kMaxJsonValues / 2) + "1]"), nil);
  EXPECT_NE(Parse("[\"" + Repeated(",", kMaxJsonValues) + "\"]"), nil) << "commas in a text";
}

TEST(PlatformJson, ReadsNumbersWithAllTheirDigits) {
  NSArray *read = Parse(
      R"([12345678901234567, 18446744073709551615, -9223372036854775808, 12, 1.5, true, null, {"a\u00e9": "\ud83c\udfac"}])");
  ASSERT_EQ([read count], 8u);
  const char *const texts[] = {"12345678901234567", "18446744073709551615", "-9223372036854775808", "12", "1.5"};
  for (NSUInteger i = 0; i < 5; ++i) EXPECT_STREQ([[[read objectAtIndex:i] stringValue] UTF8String], texts[i]);
  EXPECT_TRUE([[read objectAtIndex:5] isKindOfClass:[[NSNumber numberWithBool:YES] class]]);
  EXPECT_FALSE([[read objectAtIndex:3] isKindOfClass:[[NSNumber numberWithBool:YES] class]]);
  EXPECT_EQ([read objectAtIndex:6], [NSNull null]);
  EXPECT_STREQ([[[read objectAtIndex:7] objectForKey:@"aé"] UTF8String], "🎬");
}

TEST(PlatformJson, TakesNothingButOneWholeListOrObject) {
  for (const char *text :
       {"", " ", "12", "\"text\"", "[1", "[1] 2", "{\"a\":1", "{a:1}", "[\"\xff\"]", "<html>", "]"}) {
    EXPECT_EQ(Parse(text), nil) << text;
  }
  EXPECT_EQ(ParseJson(nullptr, 0, 0), nil);
  // In UTF-16.
  const std::string wide("[\0"
                         "1\0"
                         "]\0",
                         6);
  EXPECT_EQ(Parse(wide), nil);
  EXPECT_TRUE([Parse(" {\"a\" : [ ] } ") isKindOfClass:[NSDictionary class]]);
}
