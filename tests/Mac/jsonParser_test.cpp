#include <gtest/gtest.h>

#include <ctime>
#include <sstream>
#include <stdexcept>

#include "json.h"

namespace {

using json::Deserialize;
using json::Value;

// What the text means, in compact form; "" when it is refused.
std::string Read(const std::string& text) {
  try {
    return json::Serialize(Deserialize(text));
  } catch (const std::out_of_range&) {
    return "throws";
  }
}

// Texts, many of them nearly right or right in a way that a reader easily gets wrong, and what they mean.
const char* const kTexts[][2] = {
    {"", ""},
    {"42", ""},
    {"{]", ""},
    {"[", ""},
    {"{}", "{}"},
    {" \t\n\v\f\r[]\r\n", "[]"},
    {"\n{ \"root\" :\t{\"status\": \"success\" , \"payload\" : [ { \"name\":\"caf\xC3\xA9, {bitte}\" } , {\"id\":8} ] "
     "} }\r\n",
     "{\"root\":{\"payload\":[{\"name\":\"caf\xC3\xA9, {bitte}\"},{\"id\":8}],\"status\":\"success\"}}"},
    {R"({skipped "a" skipped: "x"  also "b":"y"})", R"({"a":"x","b":"y"})"},
    {R"({"a\"\n":"x"})", R"({"a\"\n":"x"})"},
    {R"({"a":})", R"({"a":null})"},
    {R"({"a":"x",})", ""},
    {R"({"":"x"})", ""},
    {R"({ })", ""},
    {R"({"a":[1]]})", ""},
    {R"({"a":{"b":["x"}}})", ""},
    {R"([{"a":1]}])", ""},
    {R"({"a":"x\\"]"})", ""},
    {R"({"a\\":1],"b":2})", ""},
    {R"({{"a":1}})", ""},
    {R"([[[[]]],{"a":[}],[1]])", ""},
    {R"({"a":[[],[[]],{"b":}]})", R"({"a":[[],[[]],{"b":null}]})"},
    {R"({"a":"\\","b":[1,"\\\"]"]})", R"({"a":"\","b":null})"},
    {R"(["\\",[1],"\"",[2]])", R"(["\",[1],""",[2]])"},
    {R"(["a" [1] , "b" {"c":2}])", R"(["a",[1],"b",{"c":2}])"},
    {R"([ "a" "b" "c" {"d":1} ])", R"(["a","b","c",{"d":1}])"},
    {R"([1,null,,2,[x],{"a":y},{},])", "[1,2,{}]"},
    {R"(["a{b", 2])", R"(["a{b",2])"},
    {R"(["a,b"])", ""},
    {R"([[1,2],[3],"x]"])", ""},
    {R"([x{"a":1},2])", ""},
    {R"({"a":[1,2})", "throws"},
    {R"([[1,2])", "throws"},
    {R"({"a":["]})", "throws"},
    {R"({"a":0xe,"b":0x1.8,"c":TRUE,"d":NULL})", R"({"a":14.000000,"b":1.500000,"c":true,"d":null})"},
    {R"([2147483647,-2147483648, 9223372036854775808, -99999999999999999999, 1 2 3, +5, fAl sE])",
     "[2147483647,-2147483648,9223372036854775808.000000,-100000000000000000000.000000,123,5,false]"},
    {R"([1.5, 1e3 , -1.25E-2, 1., nan(1e)])", "[1.500000,1000.000000,-0.012500,1.000000,nan]"},
    {R"(["\"\/\\\b\f\n\r\t","caf\u00e9 \u20AC1 \q2"])",
     "[\"\"/\\\b\f\n\r\t\",\"caf\xE9 \xAC"
     "1 2\"]"},
    // Escapes that are cut short or hold no digits add nothing.
    {R"(["a\u","a\u00","a\u00zz","a\u00z1","a\u004"])", "[\"a\",\"a\",\"a\",\"a\",\"a\x04\"]"},
};

TEST(JsonParser, ReadsWhatIsWrittenAndNoMore) {
  for (const auto& [text, meaning] : kTexts) EXPECT_EQ(Read(text), meaning) << text;
}

TEST(JsonParser, RefusesWhatIsNeitherNumberNorWord) {
  // The e of nan(e) comes without a digit before it, although the C library takes it.
  std::istringstream texts(
      "2147483648 -2147483649 9223372036854775807 -9223372036854775808 .5 e5 nan(e) nan 1e5e5 1.2.3 1e999 1e-999 12x "
      "0x1F 0x1ee - 1.5[ 1} truee nul nulle yes tre");
  for (std::string text; texts >> text;) EXPECT_EQ(Read("{\"k\":" + text + "}"), "") << text;
  EXPECT_EQ(Read(std::string("{\"k\":true\0}", 11)), "");
}

TEST(JsonParser, ALaterKeyReplacesAnEarlierOneAltogether) {
  EXPECT_EQ(Read(R"({"a":"x","a":[1],"a":null,"a":{"b":2}})"), R"({"a":{"b":2}})");
  // A number equals what is empty on its left, unless it keeps something of the value before.
  const Value empty[] = {Value(std::string()), Value(json::Object()), Value(json::Array()), Value(false)};
  const Value value = Deserialize(R"({"a":"x","a":{"b":1},"a":[1],"a":true,"a":5})");
  for (const Value& left : empty) EXPECT_TRUE(left == value["a"]) << left.GetType();
}

std::string Repeated(const std::string& piece, size_t count = 200000) {
  std::string text;
  for (; count != 0; --count) text += piece;
  return text;
}

// Deep texts among them, which must not use up the stack either.
TEST(JsonParser, TakesTimeInProportionToLengthAndDepth) {
  const std::string texts[] = {
      "[" + Repeated("\"a\" ") + "{}]",
      "[" + Repeated("[],") + "]",
      "[" + Repeated("1 ,") + Repeated(" ") + "]",
      "{" + Repeated("\"a\":{\"a\":1},") + "}",
      Repeated("[") + "}" + Repeated("]"),
      "{\"k\":" + Repeated("[") + "}" + Repeated("]") + "}",
      "[" + Repeated("[}") + "]",
      Repeated("[") + "]",
      Repeated("{\"a\":[") + "\"x" + Repeated("]}"),
      Repeated("{\"a\":") + "x" + Repeated("}"),
  };
  for (const std::string& text : texts) {
    const std::clock_t begin = std::clock();  // of this process alone, whatever else the machine does
    try {
      Deserialize(text);
    } catch (const std::out_of_range&) {
    }
    // Far more than a sanitizer needs, and far less than time that grows with the square of the text.
    EXPECT_LT(std::clock() - begin, 60 * CLOCKS_PER_SEC) << text.substr(0, 20);
  }
}

}  // namespace
