#include "json.h"

#include "json_dump.h"
#include "json_reference_parser.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <iterator>
#include <random>
#include <stdexcept>
#include <vector>

namespace {

using json::Deserialize;
using json::Value;
using json_reference::Dump;

/// The dump of the one member of {"k":<text>}.
std::string Member(const std::string& text) {
  Value value = Deserialize("{\"k\":" + text + "}");
  return value.GetType() == json::ObjectVal ? Dump(value["k"]) : Dump(value);
}

std::string Outcome(const std::function<Value(const std::string&)>& parse, const std::string& text) {
  try {
    return Dump(parse(text));
  } catch (const std::out_of_range&) {
    return "out of range";
  }
}

TEST(JsonParser, TakesObjectsAndArraysOnlyAtTheTop) {
  for (const char* text : {"", " ", "42", "\"text\"", "null", "true", "{", "[", "]", "}", "{]", "[}", "x{}", "{}x"}) {
    EXPECT_EQ(Dump(Deserialize(text)), "null") << text;
  }
  EXPECT_EQ(Dump(Deserialize("{}")), "{}");
  EXPECT_EQ(Dump(Deserialize(" \t\n\v\f\r[]\r\n")), "[]");
}

TEST(JsonParser, ReadsAnAnswerOfTheService) {
  const Value answer = Deserialize(
      "\n{ \"root\" :\t{\"status\": \"success\" , \"payload\" : [ { \"id\" : \"7\",\n \"project_name\":\"N\xC3\xA4"
      "chste, {bitte}\" } , {\"id\":8,\"sub\":[]} ] } }\r\n");
  EXPECT_EQ(Dump(answer),
            "{4:root={7:payload=[{2:id=string 1:7;12:project_name=string 17:N\xC3\xA4"
            "chste, {bitte};};{2:id=int 8/0x1p+3/0x1p+3;3:sub=[];};];6:status=string 7:success;};}");
}

TEST(JsonParser, IsStrictAboutKeysAndLenientAboutTheRest) {
  EXPECT_EQ(Dump(Deserialize(R"({"a":"x",})")), "null");
  EXPECT_EQ(Dump(Deserialize(R"({"":"x"})")), "null");
  EXPECT_EQ(Dump(Deserialize(R"({"a"})")), "null");
  EXPECT_EQ(Dump(Deserialize(R"({ })")), "null");
  EXPECT_EQ(Dump(Deserialize(R"({skipped "a" skipped: "x"  also "b":"y"})")), "{1:a=string 1:x;1:b=string 1:y;}");
  EXPECT_EQ(Dump(Deserialize(R"({"a\"\n":"x"})")), "{5:a\\\"\\n=string 1:x;}");
  EXPECT_EQ(Dump(Deserialize(R"({"a":"x","a":"y"})")), "{1:a=string 1:y;}");
  EXPECT_EQ(Dump(Deserialize(R"({"a":})")), "{1:a=null;}");
}

TEST(JsonParser, ReadsNumbersByTheirForm) {
  EXPECT_EQ(Member("2147483647"), Dump(Value(2147483647)));
  EXPECT_EQ(Member("-2147483648"), Dump(Value(-2147483647 - 1)));
  EXPECT_EQ(Member("2147483648"), "null");
  EXPECT_EQ(Member("9223372036854775807"), "null");
  EXPECT_EQ(Member("9223372036854775808"), Dump(Value(9223372036854775808.0)));
  EXPECT_EQ(Member("-99999999999999999999"), Dump(Value(-1e20)));
  EXPECT_EQ(Member("1.5"), Dump(Value(1.5)));
  EXPECT_EQ(Member("1e3"), Dump(Value(1000.0)));
  EXPECT_EQ(Member("-1.25E-2"), Dump(Value(-0.0125)));
  EXPECT_EQ(Member("1 2\t3"), Dump(Value(123)));
  EXPECT_EQ(Member("+5"), Dump(Value(5)));
  EXPECT_EQ(Member(", \"l\":1"), Dump(Value(0)));
  for (const char* text :
       {".5", "e5", "1e5e5", "1.2.3", "1e999", "1e-999", "12x", "0x1F", "0x1ee", "-", "1.5[", "1}"}) {
    EXPECT_EQ(Member(text), "null") << text;
  }
}

TEST(JsonParser, ReadsWordsWithoutRegardToCase) {
  EXPECT_EQ(Member("TRUE"), "true");
  EXPECT_EQ(Member("False"), "false");
  EXPECT_EQ(Member("fal se"), "false");
  EXPECT_EQ(Member("NULL"), "null");
  // A null member is kept; a word that means nothing fails the object around it.
  EXPECT_EQ(Dump(Deserialize(R"({"k":NULL})")), "{1:k=null;}");
  for (const char* word : {"truee", "nul", "nulle", "yes", "tre"}) {
    EXPECT_EQ(Dump(Deserialize(std::string("{\"k\":") + word + "}")), "null") << word;
  }
}

TEST(JsonParser, UnescapesStrings) {
  EXPECT_EQ(Member(R"("\"\/\\\b\f\n\r\t")"), "string 8:\"/\\\b\f\n\r\t");
  EXPECT_EQ(Member(R"("caf\u00e9")"), "string 4:caf\xE9");
  EXPECT_EQ(Member(R"("\u20AC1")"),
            "string 2:\xAC"
            "1");
  EXPECT_EQ(Member(R"("a\qb")"), "string 2:ab");
  EXPECT_EQ(Member(R"("a\\")"), "string 2:a\\");
  // Escapes that are cut short or hold no digits add nothing.
  for (const char* text : {R"("a\u")", R"("a\u00")", R"("a\u00zz")", R"("a\u00z1")"}) {
    EXPECT_EQ(Member(text), "string 1:a") << text;
  }
  EXPECT_EQ(Member(R"("a\u004")"), "string 2:a\x04");
}

TEST(JsonParser, LeavesNullsOutOfArrays) {
  EXPECT_EQ(Dump(Deserialize("[\"a\",\"b\"]")), "[string 1:a;string 1:b;]");
  EXPECT_EQ(Deserialize("[1,null,2]").size(), 2u);
  EXPECT_EQ(Deserialize("[1,,2,]").size(), 2u);
  EXPECT_EQ(Deserialize("[[1],[x],{\"a\":y},{}]").size(), 2u);
  EXPECT_EQ(Dump(Deserialize("[\"a,b\"]")), "null");
  EXPECT_EQ(Dump(Deserialize("[\"a{b\", 2]")), "[string 3:a{b;" + Dump(Value(2)) + ";]");
}

TEST(JsonParser, ThrowsWhenANestedBracketIsNeverClosed) {
  EXPECT_THROW(Deserialize(R"({"a":[1,2})"), std::out_of_range);
  EXPECT_THROW(Deserialize(R"([[1,2])"), std::out_of_range);
  EXPECT_THROW(Deserialize(R"({"a":["]})"), std::out_of_range);
  // A bracket of the wrong kind is a fault like any other, and so is one too many.
  EXPECT_EQ(Dump(Deserialize(R"({"a":{"b":["x"}}})")), "null");
  EXPECT_EQ(Dump(Deserialize(R"({"a":[1]]})")), "null");
}

/// Texts that are nearly right, or right in a way that a reader easily gets wrong.
const char* const kTexts[] = {
    R"({"a":[1]]})",
    R"({"a":[1}]})",
    R"({"a":{"b":["x"}}})",
    R"([{"a":1]}])",
    R"({"a":"x\\"]"})",
    R"({"a\\":1],"b":2})",
    R"([1}2])",
    R"(["a" [1] , "b" {"c":2}])",
    R"({{"a":1}})",
    R"({"a":[{"b":[}]}]})",
    R"([[[[]]],{"a":[}],[1]])",
    R"({"a":"\\","b":[1,"\\\"]"]})",
    R"([x{"a":1},2])",
    R"(["\\",[1],"\"",[2]])",
    R"({"a":[[],[[]],{"b":}]})",
    R"([ "a" "b" "c" {"d":1} ])",
    "[\"a\n\", 1e5 , tRuE, 1.]",
    R"({"a":0xe,"b":0x1.8})",
    R"({"a":1,"a":null,"a":2})",
    R"([[1,2],[3],"x]"])",
    R"({"a":{"b":-20,"c":[]},"":1e999,"c\"":[FALSE, 2e3],"d":"\u00e9\q"})",
    "[ 2147483648 ,\t99999999999999999999,\v\"\\u1\", {} ,\f\r\"a,b\"]",
};

/// Makes texts by changing those at random.
class TextMaker {
 public:
  explicit TextMaker(unsigned seed) : random_(seed) {}

  std::string Make() {
    std::string text = Text();
    for (unsigned changes = Below(5); changes != 0; --changes) Change(text);
    if (Below(4) == 0) text = Below(2) == 0 ? "{\"k\":" + text + "}" : "[" + text + "]";
    return text;
  }

 private:
  unsigned Below(size_t limit) { return static_cast<unsigned>(random_() % limit); }

  std::string Text() { return kTexts[Below(std::size(kTexts))]; }

  std::string Piece() {
    static const char* const kPieces[] = {
        "{", "}",    "[",    "]",     "\"",  "\\",   ",",    ":",  " ",    "\n",     "1",        "fals",       "e",
        ".", "\\\"", "\\\\", "\"x\"", "[x]", "null", "true", "{}", "-1.5", "\"a\":", "{\"b\":1", "\"\\u00e9\""};
    return Below(20) == 0 ? std::string(1, static_cast<char>(Below(256))) : kPieces[Below(std::size(kPieces))];
  }

  void Change(std::string& text) {
    const unsigned at = Below(text.size() + 1);
    const unsigned length = Below(4);
    if (Below(3) == 0) {
      const std::string other = Text();
      text.replace(at, length, other.substr(Below(other.size()), Below(10)));
    } else {
      text.replace(at, length, Below(3) == 0 ? "" : Piece());
    }
  }

  std::mt19937 random_;
};

TEST(JsonParser, AgreesWithTheReference) {
  for (const char* text : kTexts) {
    EXPECT_EQ(Outcome(Deserialize, text), Outcome(json_reference::Deserialize, text)) << text;
  }
  TextMaker maker(20200229);
  int parsed = 0;
  int refused = 0;
  int thrown = 0;
  for (int i = 0; i < 100000; ++i) {
    const std::string text = maker.Make();
    const std::string expected = Outcome(json_reference::Deserialize, text);
    ASSERT_EQ(Outcome(Deserialize, text), expected) << "text " << i << ": " << text;
    ++(expected == "null" ? refused : expected == "out of range" ? thrown : parsed);
  }
  // The texts are worth something only when every outcome is frequent.
  EXPECT_GT(parsed, 10000);
  EXPECT_GT(refused, 10000);
  EXPECT_GT(thrown, 1000);
}

std::string Repeated(const std::string& piece, size_t count) {
  std::string text;
  text.reserve(piece.size() * count);
  for (; count != 0; --count) text += piece;
  return text;
}

TEST(JsonParser, TakesTimeInProportionToTheText) {
  constexpr size_t kCount = 200000;
  // Each of these invites a parser to look at the rest of the text again for every piece.
  const std::string texts[] = {
      "[" + Repeated("\"a\" ", kCount) + "{}]",
      "[" + Repeated("[],", kCount) + "]",
      "[" + Repeated("1 ,", kCount) + Repeated(" ", kCount) + "]",
      "[\"" + Repeated("\\\\", kCount) + "\"]",
      "{" + Repeated("\"a\":{\"a\":1},", kCount) + "}",
      Repeated("[", kCount) + "}" + Repeated("]", kCount),
      "[" + Repeated("[}", kCount) + "]",
      Repeated("{\"a\":[", kCount) + "\"x" + Repeated("]}", kCount),
      Repeated("{\"a\":", kCount) + "x" + Repeated("}", kCount),
  };
  // Far more than a sanitizer needs, and far less than time that grows with the square of the text.
  constexpr std::chrono::seconds kDeadline(60);
  for (const std::string& text : texts) {
    const auto begin = std::chrono::steady_clock::now();
    try {
      Deserialize(text);
    } catch (const std::out_of_range&) {
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, kDeadline) << text.substr(0, 20);
  }
}

TEST(JsonParser, DepthDoesNotUseUpTheStack) {
  constexpr size_t kLevels = 100000;
  std::string open;
  for (size_t i = 0; i < kLevels; ++i) open += R"({"a":)";
  EXPECT_EQ(Deserialize(open + std::string(kLevels, '}')).size(), 1u);
  EXPECT_EQ(Deserialize(std::string(kLevels, '[') + std::string(kLevels, ']')).size(), 1u);
  EXPECT_THROW(Deserialize(std::string(kLevels, '[') + "]"), std::out_of_range);
  // The innermost array fails, and all those around it are left.
  EXPECT_EQ(Deserialize(std::string(kLevels, '[') + "x" + std::string(kLevels, ']')).size(), 1u);
  // Every level fails by the bracket of the wrong kind in the middle.
  EXPECT_EQ(Dump(Deserialize("{\"k\":" + std::string(kLevels, '[') + "}" + std::string(kLevels, ']') + "}")), "null");
}

}  // namespace
