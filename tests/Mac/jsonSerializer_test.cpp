#include "json.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
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

/// A locale with a decimal comma for the life of this object, made for the purpose: few machines have one installed.
class CommaLocale {
 public:
  CommaLocale() : before_(std::setlocale(LC_NUMERIC, nullptr)) {
    std::string folder = (std::filesystem::temp_directory_path() / "orvane-locale-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) return;
    folder_ = folder;
    // Whether it worked shows below.
    const std::string make = "localedef -i de_DE -f UTF-8 '" + folder + "/comma' >/dev/null 2>&1";
    (void)!std::system(make.c_str());
    setenv("LOCPATH", folder.c_str(), 1);
    found_ = std::setlocale(LC_NUMERIC, "comma") != nullptr;
  }
  ~CommaLocale() {
    std::setlocale(LC_NUMERIC, before_.c_str());
    unsetenv("LOCPATH");
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;

  bool found() const { return found_; }

 private:
  const std::string before_;
  std::filesystem::path folder_;
  bool found_ = false;
};

TEST(JsonSerializer, WritesAPointInEveryLocale) {
  const CommaLocale locale;
  if (!locale.found()) GTEST_SKIP() << "this machine cannot make a locale with a decimal comma";
  char comma[8];
  std::snprintf(comma, sizeof comma, "%.1f", 1.5);
  ASSERT_STREQ(comma, "1,5");
  EXPECT_EQ(InArray(Value(-1.5)), "[-1.500000]");
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
