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
  EXPECT_EQ(Parse(Repeated("{\"a\":", kMaxJsonDepth + 1) + "1" + Repeated("}", kMaxJsonDepth + 1)), nil);
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
