#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "TemporaryFolder.h"
#include "json.h"

namespace {

using json::Serialize;
using json::Value;

std::string InArray(const Value& value) {
  json::Array array;
  array.push_back(value);
  return Serialize(Value(array));
}

TEST(JsonSerializer, WritesValuesByTheirTypeAndScalarsOnlyInside) {
  json::Object object;
  object["b"] = Value(-3);
  object["a"] = Value(std::string("say \"\\hi\"\n"));
  EXPECT_EQ(Serialize(Value(object)), "{\"a\":\"say \"\\hi\"\n\",\"b\":-3}");
  EXPECT_EQ(InArray(Value()) + InArray(Value(true)) + InArray(Value(2.5)), "[null][true][2.500000]");
  EXPECT_EQ(InArray(Value(-0.0000001)), "[-0.000000]");
  EXPECT_EQ(InArray(Value(1e20)), "[100000000000000000000.000000]");
  EXPECT_EQ(InArray(Value(-std::numeric_limits<double>::max())).size(), 2u + 1 + 309 + 7);
  EXPECT_EQ(Serialize(Value(5)) + Serialize(Value(std::string("x"))) + Serialize(Value()), "");
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

}  // namespace
