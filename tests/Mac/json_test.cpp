#include "json.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <functional>
#include <limits>
#include <stdexcept>
#include <utility>

namespace {

using json::Array;
using json::Deserialize;
using json::Object;
using json::Value;

// The library makes no FloatVal itself.
class FloatValue : public Value {
 public:
  FloatValue(float number, double precise) {
    mValueType = json::FloatVal;
    mFloatVal = number;
    mDoubleVal = precise;
  }
};

Value Text(const std::string& text) {
  return Value(text);
}

TEST(JsonValue, EveryNumberReadsAsIntFloatAndDouble) {
  EXPECT_EQ(Value(2.9).ToInt(), 2);
  EXPECT_EQ(Value(-2.9).ToInt(), -2);
  EXPECT_EQ(Value(7).ToDouble(), 7.0);
  EXPECT_EQ(Value(0.1).ToFloat(), 0.1f);
  EXPECT_EQ(static_cast<double>(Value(0.1)), 0.1);
  EXPECT_EQ(Value(16777217).ToFloat(), 16777216.0f);
  EXPECT_EQ(Value(1e300).ToFloat(), std::numeric_limits<float>::infinity());
  // A double beyond int reads as the nearest int.
  EXPECT_EQ(Value(2147483647.5).ToInt(), INT_MAX);
  EXPECT_EQ(Value(-std::numeric_limits<double>::infinity()).ToInt(), INT_MIN);
  EXPECT_EQ(Value(std::nan("")).ToInt(), 0);
}

TEST(JsonValue, AFloatKeepsTheDoubleThatItWasGiven) {
  const FloatValue original(2.75f, 9.5);
  Value assigned(3);
  assigned = original;
  for (const Value& copy : {Value(original), assigned}) {
    EXPECT_EQ(copy.GetType(), json::FloatVal);
    EXPECT_EQ(copy.ToInt(), 2);
    EXPECT_EQ(copy.ToFloat(), 2.75f);
    EXPECT_EQ(copy.ToDouble(), 9.5);
  }
  Array array;
  array.push_back(original);
  EXPECT_EQ(json::Serialize(Value(array)), "[2.750000]");
}

TEST(JsonValue, AReadOfTheWrongTypeThrowsTheMessageOfThatRead) {
  Value flag(true);
  const Value& constant = flag;
  const std::pair<const char*, std::function<void()>> reads[] = {
      {"IsNumeric()", [&] { flag.ToInt(); }},
      {"IsNumeric()", [&] { flag.ToFloat(); }},
      {"IsNumeric()", [&] { (void)static_cast<double>(flag); }},
      {"BoolVal", [] { Value(1).ToBool(); }},
      {"BoolVal", [] { (void)static_cast<bool>(Value()); }},
      {"StringVal", [] { Value().ToString(); }},
      {"StringVal", [&] { std::string text = flag; }},
      {"ObjectVal", [&] { flag.ToObject(); }},
      {"ObjectVal", [&] { flag["key"]; }},
      {"ObjectVal", [&] { constant["key"]; }},
      {"ObjectVal", [&] { constant[std::string("key")]; }},
      {"ObjectVal", [&] { flag.HasKey("key"); }},
      {"ObjectVal", [&] { flag.HasKeys(std::vector<std::string>()); }},
      {"ObjectVal", [&] { flag.HasKeys(nullptr, 0); }},
      {"ArrayVal", [&] { flag.ToArray(); }},
      {"ArrayVal", [&] { flag[size_t{0}]; }},
      {"ArrayVal", [&] { constant[size_t{0}]; }},
  };
  for (const auto& [type, read] : reads) {
    try {
      read();
      ADD_FAILURE() << type;
    } catch (const std::runtime_error& error) {
      EXPECT_EQ(error.what(), std::string("json mValueType==") + type + " required");
    }
  }
  EXPECT_TRUE(flag.ToBool());
}

TEST(JsonValue, ClearChangesTheTypeAlone) {
  Value value = Text("old");
  value.Clear();
  EXPECT_EQ(value.GetType(), json::NullVal);
  // What stays shows in a comparison that goes by the left-hand type.
  value = Value(5);
  EXPECT_TRUE(Text("old") == value);
  value = Text("new");
  EXPECT_EQ(value.ToString(), "new");
}

TEST(JsonValue, MayBeAssignedFromAPartOfItself) {
  Value object = Deserialize(R"({"a":{"a":{"a":"x"}}})");
  Value array = Deserialize("[[[1]]]");
  Value movedObject = object;
  Value movedArray = array;
  object = object["a"]["a"];
  array = array[size_t{0}];
  movedObject = std::move(movedObject["a"]["a"]);
  movedArray = std::move(movedArray[size_t{0}]);
  EXPECT_EQ(json::Serialize(object) + json::Serialize(array), R"({"a":"x"}[[1]])");
  EXPECT_EQ(json::Serialize(movedObject) + json::Serialize(movedArray), R"({"a":"x"}[[1]])");
}

TEST(JsonValue, DepthDoesNotUseUpTheStack) {
  constexpr size_t kLevels = 100000;
  std::string objects;
  for (size_t i = 0; i < kLevels; ++i) objects += R"({"a":)";
  objects += "1" + std::string(kLevels, '}');
  const std::string arrays = std::string(kLevels, '[') + std::string(kLevels, ']');
  for (const std::string& text : {objects, arrays}) {
    const Value value = Deserialize(text);
    Value copy(value);
    EXPECT_TRUE(copy == value);
    const Value deeper = Deserialize("[" + text + "]");
    EXPECT_FALSE(deeper[size_t{0}] == deeper);
    copy = deeper;
    EXPECT_TRUE(copy[size_t{0}] == value);
  }
}

TEST(JsonObject, LookingUpAMissingKeyAddsANull) {
  Value value{Object()};
  EXPECT_EQ(value["c"].GetType(), json::NullVal);
  EXPECT_EQ(value[std::string("a")].GetType(), json::NullVal);
  EXPECT_FALSE(value.HasKey("b"));
  const char* keys[] = {"a", "b", "c", "d"};
  EXPECT_EQ(value.HasKeys(keys, 4), 1);
  EXPECT_EQ(value.HasKeys(keys + 2, 2), 1);
  EXPECT_EQ(value.HasKeys({"c", "a"}), -1);
  EXPECT_EQ(value.HasKeys({"c", "d"}), 1);
  EXPECT_EQ(json::Serialize(value), R"({"a":null,"c":null})");
  Object object = value;
  object.Clear();
  EXPECT_EQ(object.size() + value.size() + Value().size() + Text("text").size(), 0u + 2 + 1 + 1);
}

TEST(JsonArray, InsertsBeforeAnIndexAndAppendsAtTheEnd) {
  Array array;
  array.push_back(Value(1));
  array.insert(0, Value(0));
  array.insert(2, Value(2));
  array.push_back(array[0]);
  EXPECT_EQ(json::Serialize(Value(array)), "[0,1,2,0]");
  array.Clear();
  EXPECT_EQ(Value(array).size(), 0u);
}

TEST(JsonArray, FindsByEqualityWithTheElementOnTheLeft) {
  Array array;
  array.push_back(Value(1));
  array.push_back(Value(2.0));
  array.push_back(Text(""));
  const Array& constant = array;
  EXPECT_EQ(array.find(Value(2)) - array.begin(), 1);
  // The empty string equals any number that it is on the left of.
  EXPECT_EQ(array.find(Value(5)) - array.begin(), 2);
  EXPECT_EQ(constant.find(Value(5)) - constant.begin(), 2);
  EXPECT_FALSE(array.HasValue(Value(true)));
}

TEST(JsonEquality, ComparesNumbersOfAllKindsByValue) {
  const FloatValue one(1.0f, 4.0);
  const Value ones[] = {Value(1), Value(1.0), one};
  for (const Value& left : ones) {
    for (const Value& right : ones) EXPECT_TRUE(left == right) << left.GetType() << " " << right.GetType();
  }
  // Int and float meet as floats, int and double as doubles.
  EXPECT_TRUE(Value(16777217) == FloatValue(16777216.0f, 0));
  EXPECT_TRUE(FloatValue(16777216.0f, 0) == Value(16777217));
  EXPECT_FALSE(Value(16777217) == Value(16777216.0));
  EXPECT_FALSE(Value(0.1) == FloatValue(0.1f, 0.1));
  EXPECT_FALSE(FloatValue(0.1f, 0.1) == Value(0.1));
}

TEST(JsonEquality, GoesByTheLeftHandTypeWhenANumberIsInvolved) {
  const Value number(5);
  const Value zeros[] = {Text(""), Value(Object()), Value(Array()), Value(false), Value()};
  for (const Value& zero : zeros) {
    EXPECT_TRUE(zero == number) << zero.GetType();
    EXPECT_FALSE(number == zero) << zero.GetType();
  }
  EXPECT_FALSE(Value(true) == Value(1));
  EXPECT_FALSE(Text("5") == number);
  EXPECT_FALSE(Deserialize("[[]]") == number);
}

TEST(JsonEquality, LooksIntoObjectsArraysAndStrings) {
  EXPECT_FALSE(Text("") == Value(false));
  EXPECT_FALSE(Value() == Text(""));
  EXPECT_FALSE(Text("a") == Text(std::string("a\0b", 3)));
  EXPECT_TRUE(Deserialize(R"({"a":[1,{"b":"x"}]})") == Deserialize(R"({"a":[1.0,{"b":"x"}]})"));
  EXPECT_FALSE(Deserialize(R"({"a":[1,{"b":"x"}]})") == Deserialize(R"({"a":[1,{"b":"y"}]})"));
  EXPECT_FALSE(Deserialize(R"({"a":1})") == Deserialize(R"({"b":1})"));
  EXPECT_FALSE(Deserialize("[1,2]") == Deserialize("[1]"));
  EXPECT_FALSE(Deserialize("[1,2]") == Deserialize("[2,1]"));
  // The two containers by themselves.
  const Object one = Deserialize(R"({"a":1})");
  const Array pair = Deserialize("[1,2]");
  EXPECT_TRUE(one == one && pair == pair);
  EXPECT_FALSE(one == Object(Deserialize(R"({"a":2})")) || one == Object() || pair == Array(Deserialize("[1,3]")));
}

}  // namespace
