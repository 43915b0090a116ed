#include "json.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>
#include <utility>

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
  EXPECT_EQ(Serialize(Value(array)),
            R"([{"a":"x","b":1,"c":{},"d":[]},null,[{"a":"x","b":1,"c":{},"d":[]},null]])");
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

TEST(JsonSerializer, WritesAPointInEveryLocale) {
  const char* const names[] = {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "de_DE"};
  const std::string before = std::setlocale(LC_NUMERIC, nullptr);
  bool found = false;
  for (const char* name : names) found = found || std::setlocale(LC_NUMERIC, name) != nullptr;
  if (!found) GTEST_SKIP() << "this machine has no locale with a decimal comma";
  const std::string text = InArray(Value(1.5));
  std::setlocale(LC_NUMERIC, before.c_str());
  EXPECT_EQ(text, "[1.500000]");
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
