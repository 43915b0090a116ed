#include "json.h"

#include "json_dump.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <functional>
#include <limits>
#include <stdexcept>
#include <utility>

namespace {

using json::Array;
using json::Object;
using json::Value;
using json_reference::Dump;

/// The library makes no FloatVal itself.
class FloatValue : public Value {
 public:
  FloatValue(float number, double precise) {
    mValueType = json::FloatVal;
    mFloatVal = number;
    mDoubleVal = precise;
  }
};

std::string MessageOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "nothing thrown";
}

Value Text(const char* text) {
  return Value(std::string(text));
}

/// [[[...]]] or {"a":{"a":...}}, built from the inside without ever copying.
Value Nested(bool object, int levels) {
  Value value;
  for (int i = 0; i < levels; ++i) {
    if (object) {
      Object outer;
      outer["a"] = std::move(value);
      value = Value(std::move(outer));
    } else {
      Array outer;
      outer.push_back(std::move(value));
      value = Value(std::move(outer));
    }
  }
  return value;
}

TEST(JsonValue, EveryNumberReadsAsIntFloatAndDouble) {
  EXPECT_EQ(Value(2.9).ToInt(), 2);
  EXPECT_EQ(Value(-2.9).ToInt(), -2);
  EXPECT_EQ(Value(7).ToDouble(), 7.0);
  EXPECT_EQ(Value(0.1).ToFloat(), 0.1f);
  EXPECT_EQ(Value(16777217).ToFloat(), 16777216.0f);
  EXPECT_EQ(Value(1e300).ToFloat(), std::numeric_limits<float>::infinity());
}

TEST(JsonValue, ADoubleBeyondIntReadsAsTheNearestInt) {
  EXPECT_EQ(Value(2147483647.5).ToInt(), INT_MAX);
  EXPECT_EQ(Value(1e300).ToInt(), INT_MAX);
  EXPECT_EQ(Value(-2147483648.5).ToInt(), INT_MIN);
  EXPECT_EQ(Value(-std::numeric_limits<double>::infinity()).ToInt(), INT_MIN);
  EXPECT_EQ(Value(std::nan("")).ToInt(), 0);
}

TEST(JsonValue, CopyingDerivesTheNumbersByType) {
  const FloatValue original(2.75f, 9.5);
  const Value copy(original);
  EXPECT_EQ(copy.GetType(), json::FloatVal);
  EXPECT_EQ(copy.ToInt(), 2);
  EXPECT_EQ(copy.ToFloat(), 2.75f);
  EXPECT_EQ(copy.ToDouble(), 9.5);
  Value assigned(3);
  assigned = original;
  EXPECT_EQ(Dump(assigned), Dump(copy));
}

TEST(JsonValue, AReadOfTheWrongTypeThrowsTheMessageOfThatRead) {
  const std::string numeric = "json mValueType==IsNumeric() required";
  const std::string boolean = "json mValueType==BoolVal required";
  const std::string string = "json mValueType==StringVal required";
  const std::string object = "json mValueType==ObjectVal required";
  const std::string array = "json mValueType==ArrayVal required";
  Value flag(true);
  const Value& constant = flag;
  EXPECT_EQ(MessageOf([&] { flag.ToInt(); }), numeric);
  EXPECT_EQ(MessageOf([&] { flag.ToFloat(); }), numeric);
  EXPECT_EQ(MessageOf([&] { (void)static_cast<double>(flag); }), numeric);
  EXPECT_EQ(MessageOf([&] { Value(1).ToBool(); }), boolean);
  EXPECT_EQ(MessageOf([&] { (void)static_cast<bool>(Value()); }), boolean);
  EXPECT_EQ(MessageOf([&] { Value().ToString(); }), string);
  EXPECT_EQ(MessageOf([&] { std::string text = flag; }), string);
  EXPECT_EQ(MessageOf([&] { flag.ToObject(); }), object);
  EXPECT_EQ(MessageOf([&] { flag.ToArray(); }), array);
  EXPECT_EQ(MessageOf([&] { flag[size_t{0}]; }), array);
  EXPECT_EQ(MessageOf([&] { constant[size_t{0}]; }), array);
  EXPECT_EQ(MessageOf([&] { flag["key"]; }), object);
  EXPECT_EQ(MessageOf([&] { constant["key"]; }), object);
  EXPECT_EQ(MessageOf([&] { constant[std::string("key")]; }), object);
  EXPECT_EQ(MessageOf([&] { flag.HasKey("key"); }), object);
  EXPECT_EQ(MessageOf([&] { flag.HasKeys(std::vector<std::string>()); }), object);
  EXPECT_TRUE(flag.ToBool());
}

TEST(JsonValue, ClearChangesTheTypeAlone) {
  Value value = Text("old");
  value.Clear();
  EXPECT_EQ(value.GetType(), json::NullVal);
  // What stays shows in a comparison that goes by the left-hand type.
  value = Value(5);
  EXPECT_TRUE(Text("old") == value);
  EXPECT_FALSE(Text("") == value);
  value = Text("new");
  EXPECT_EQ(value.ToString(), "new");
}

TEST(JsonValue, SizeCountsWhatTheTypeHolds) {
  Object object;
  object["a"] = Value(1);
  object["b"] = Value(2);
  EXPECT_EQ(Value(object).size(), 2u);
  EXPECT_EQ(Text("text").size(), 1u);
  EXPECT_EQ(Value().size(), 1u);
  EXPECT_EQ(Value(Array()).size(), 0u);
}

TEST(JsonValue, CopiesShareNothing) {
  Object inner;
  inner["x"] = Value(1);
  Array list;
  list.push_back(Value(inner));
  const Value original(list);
  Value copy(original);
  copy[size_t{0}]["x"] = Text("changed");
  EXPECT_EQ(original[size_t{0}]["x"].ToInt(), 1);
  EXPECT_EQ(copy[size_t{0}]["x"].ToString(), "changed");
}

TEST(JsonValue, MayBeAssignedFromAPartOfItself) {
  for (const bool move : {false, true}) {
    Value value = Nested(true, 3);
    Value list = Nested(false, 3);
    if (move) {
      value = std::move(value["a"]["a"]);
      list = std::move(list[size_t{0}]);
    } else {
      value = value["a"]["a"];
      list = list[size_t{0}];
    }
    EXPECT_EQ(Dump(value), "{1:a=null;}");
    EXPECT_EQ(Dump(list), "[[null;];]");
  }
  Value same = Text("same");
  const Value& alias = same;
  same = alias;
  EXPECT_EQ(same.ToString(), "same");
}

TEST(JsonValue, DepthDoesNotUseUpTheStack) {
  constexpr int kLevels = 100000;
  for (const bool object : {true, false}) {
    Value value = Nested(object, kLevels);
    Value copy(value);
    EXPECT_TRUE(copy == value);
    copy = value;
    int levels = 0;
    const Value* level = &copy;
    for (; level->GetType() != json::NullVal; ++levels) level = object ? &(*level)["a"] : &(*level)[size_t{0}];
    EXPECT_EQ(levels, kLevels);
    value = Nested(object, kLevels + 1);
    EXPECT_FALSE(copy == value);
  }
}

TEST(JsonObject, LookingUpAMissingKeyAddsANull) {
  Value value{Object()};
  EXPECT_EQ(value["new"].GetType(), json::NullVal);
  EXPECT_EQ(value[std::string("new")].GetType(), json::NullVal);
  EXPECT_EQ(value.size(), 1u);
  EXPECT_TRUE(value.HasKey("new"));
  EXPECT_FALSE(value.HasKey("other"));
  EXPECT_EQ(value.size(), 1u);
}

TEST(JsonObject, HasKeysTellsTheFirstThatIsAbsent) {
  Object object;
  object["a"] = Value(1);
  object["c"] = Value(1);
  const char* keys[] = {"a", "b", "c", "d"};
  EXPECT_EQ(object.HasKeys({"a", "b", "c"}), 1);
  EXPECT_EQ(object.HasKeys(keys, 4), 1);
  EXPECT_EQ(object.HasKeys(keys, 1), -1);
  EXPECT_EQ(object.HasKeys(keys, 0), -1);
  EXPECT_EQ(object.HasKeys({"c", "a"}), -1);
  EXPECT_EQ(Value(object).HasKeys(keys, 4), 1);
  EXPECT_TRUE(object.find("b") == object.end());
  object.Clear();
  EXPECT_EQ(object.size(), 0u);
}

TEST(JsonArray, InsertsBeforeAnIndexAndAppendsAtTheEnd) {
  Array array;
  array.push_back(Value(1));
  array.insert(0, Value(0));
  array.insert(2, Value(2));
  array.push_back(array[0]);
  EXPECT_EQ(json::Serialize(Value(array)), "[0,1,2,0]");
  array.Clear();
  EXPECT_TRUE(array.begin() == array.end());
}

TEST(JsonArray, FindsByEqualityWithTheElementOnTheLeft) {
  Array array;
  array.push_back(Value(1));
  array.push_back(Value(2.0));
  array.push_back(Text(""));
  EXPECT_EQ(array.find(Value(2)) - array.begin(), 1);
  // The empty string equals any number that it is on the left of.
  EXPECT_EQ(array.find(Value(5)) - array.begin(), 2);
  EXPECT_FALSE(array.HasValue(Value(true)));
  EXPECT_TRUE(array.HasValue(Text("")));
}

TEST(JsonEquality, ComparesNumbersOfAllKindsByValue) {
  const FloatValue one(1.0f, 4.0);
  const Value ones[] = {Value(1), Value(1.0), one};
  for (const Value& left : ones) {
    for (const Value& right : ones) EXPECT_TRUE(left == right) << Dump(left) << " " << Dump(right);
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
    EXPECT_TRUE(zero == number) << Dump(zero);
    EXPECT_FALSE(number == zero) << Dump(zero);
  }
  EXPECT_FALSE(Value(true) == Value(1));
  EXPECT_FALSE(Text("5") == number);
  EXPECT_FALSE(Nested(false, 1) == number);
}

TEST(JsonEquality, TellsOtherTypesApart) {
  EXPECT_FALSE(Text("") == Value(false));
  EXPECT_FALSE(Value() == Text(""));
  EXPECT_TRUE(Value() == Value());
  EXPECT_FALSE(Text(std::string("a\0b", 3).c_str()) == Value(std::string("a\0b", 3)));
}

TEST(JsonEquality, LooksIntoObjectsAndArrays) {
  EXPECT_TRUE(json::Deserialize(R"({"a":[1,{"b":"x"}]})") == json::Deserialize(R"({"a":[1.0,{"b":"x"}]})"));
  EXPECT_FALSE(json::Deserialize(R"({"a":[1,{"b":"x"}]})") == json::Deserialize(R"({"a":[1,{"b":"y"}]})"));
  EXPECT_FALSE(json::Deserialize(R"({"a":1})") == json::Deserialize(R"({"b":1})"));
  EXPECT_FALSE(json::Deserialize("[1,2]") == json::Deserialize("[1]"));
  EXPECT_FALSE(json::Deserialize("[1,2]") == json::Deserialize("[2,1]"));
}

}  // namespace
