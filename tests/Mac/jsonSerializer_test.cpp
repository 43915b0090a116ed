#include "json.h"

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace {

using json::Array;
using json::Object;
using json::Serialize;
using json::Value;

std::string InArray(const Value& value) {
  Array array;
  array.push_back(value);
  return Serialize(Value(array));
}

TEST(JsonSerializer, WritesObjectsInKeyOrderWithoutSpaces) {
  Object object;
  object["b"] = Value(1);
  object["a"] = Value(std::string("x"));
  object["c"] = Value(Object());
  object["d"] = Value(Array());
  EXPECT_EQ(Serialize(Value(object)), R"({"a":"x","b":1,"c":{},"d":[]})");
  Array array;
  array.push_back(Value(object));
  array.push_back(Value());
  array.push_back(Value(array));
  EXPECT_EQ(Serialize(Value(array)), R"([{"a":"x","b":1,"c":{},"d":[]},null,[{"a":"x","b":1,"c":{},"d":[]},null]])");
}

TEST(JsonSerializer, WritesScalarsByTheirType) {
  EXPECT_EQ(InArray(Value(-3)), "[-3]");
  EXPECT_EQ(InArray(Value(2.5)), "[2.500000]");
  EXPECT_EQ(InArray(Value(0.0000001)), "[0.000000]");
  EXPECT_EQ(InArray(Value(-0.25)), "[-0.250000]");
  EXPECT_EQ(InArray(Value(1e20)), "[100000000000000000000.000000]");
  EXPECT_EQ(InArray(Value(-std::numeric_limits<double>::max())).size(), 2u + 1 + 309 + 7);
  EXPECT_EQ(InArray(Value(true)), "[true]");
  EXPECT_EQ(InArray(Value(false)), "[false]");
  EXPECT_EQ(InArray(Value()), "[null]");
}

TEST(JsonSerializer, EscapesNothing) {
  Object object;
  object["k\"\n"] = Value(std::string("say \"\\hi\""));
  EXPECT_EQ(Serialize(Value(object)), "{\"k\"\n\":\"say \"\\hi\"\"}");
}

TEST(JsonSerializer, WritesNothingForAScalarAlone) {
  EXPECT_EQ(Serialize(Value(5)), "");
  EXPECT_EQ(Serialize(Value(std::string("x"))), "");
  EXPECT_EQ(Serialize(Value()), "");
}

// In a locale with a decimal comma, made for the purpose: few machines have one installed.
TEST(JsonSerializer, WritesAPointInEveryLocale) {
  const TemporaryFolder folder;
  const std::string make = "localedef -i de_DE -f UTF-8 '" + (folder / "comma") + "' >/dev/null 2>&1";
  if (std::system(make.c_str()) == -1) GTEST_SKIP() << "this machine cannot make a locale";
  setenv("LOCPATH", folder.Path().c_str(), 1);
  std::setlocale(LC_NUMERIC, "comma");
  char comma[8];
  std::snprintf(comma, sizeof comma, "%.1f", 1.5);
  const std::string text = InArray(Value(-1.5));
  std::setlocale(LC_NUMERIC, "C");
  unsetenv("LOCPATH");
  if (std::string(comma) != "1,5") GTEST_SKIP() << "this machine cannot make a locale with a decimal comma";
  EXPECT_EQ(text, "[-1.500000]");
}

TEST(JsonSerializer, WritesDeepTreesAndReadsThemBack) {
  constexpr size_t kLevels = 100000;
  const std::string arrays = std::string(kLevels, '[') + std::string(kLevels, ']');
  EXPECT_TRUE(Serialize(json::Deserialize(arrays)) == arrays);
  std::string objects;
  for (size_t i = 0; i < kLevels; ++i) objects += R"({"a":)";
  objects += "1" + std::string(kLevels, '}');
  EXPECT_TRUE(Serialize(json::Deserialize(objects)) == objects);
}

}  // namespace
