#include <strings.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "json.h"

namespace json {

// What a bracket encloses.
enum StackDepthType { InObject = 0, InArray = 1 };

namespace {

constexpr size_t kNone = std::string::npos;

// The two sets are those of the C library's default locale, whatever locale the host has set.
bool IsSpace(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

bool EqualsIgnoringCase(const std::string& text, const char* word) {
  return text.size() == std::strlen(word) && strcasecmp(text.c_str(), word) == 0;
}

// A part of the text: the characters from begin up to, not including, end.
struct Range {
  size_t begin = 0;
  size_t end = 0;

  bool empty() const { return begin >= end; }
};

Range Trim(const std::string& text, Range range) {
  while (!range.empty() && IsSpace(text[range.begin])) ++range.begin;
  while (!range.empty() && IsSpace(text[range.end - 1])) --range.end;
  return range;
}

// Where in the range the first quote is that no backslash escapes, or kNone.
size_t GetQuotePos(const std::string& text, Range range) {
  bool escape = false;
  for (size_t i = range.begin; i < range.end; ++i) {
    if (text[i] == '"' && !escape) return i;
    escape = text[i] == '\\' && !escape;
  }
  return kNone;
}

// The text with its escapes replaced. Hexadecimal digits that are missing add nothing.
std::string UnescapeJSONString(std::string_view text) {
  static constexpr std::string_view kLetters = "\"/\\bfnrt";
  static constexpr std::string_view kMeanings = "\"/\\\b\f\n\r\t";
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    // A backslash at the very end stands for itself.
    if (text[i] != '\\' || i + 1 == text.size()) {
      out += text[i];
      continue;
    }
    const char letter = text[++i];
    const size_t known = kLetters.find(letter);
    if (known != kNone) out += kMeanings[known];
    if (letter != 'u') continue;
    const std::string_view lowByte = text.substr(std::min(i + 3, text.size()), 2);
    unsigned byte = 0;
    const auto result = std::from_chars(lowByte.data(), lowByte.data() + lowByte.size(), byte, 16);
    if (result.ec == std::errc()) out += static_cast<char>(byte);
    i += 4;
  }
  return out;
}

// For every opening bracket of a text the place where a search for its end ends: at the matching closing bracket or at
// one of the wrong kind. Made in one pass, so that nesting costs nothing.
//
// A search that begins at a bracket takes every quote without a backslash before it as the begin or end of a string,
// and passes over strings. So it sees exactly the brackets with an even number of such quotes between them and its
// begin: all brackets of a text fall into two classes that don't see each other, and each class is matched by itself.
class BracketEnds {
 public:
  // The range begins with a bracket.
  BracketEnds(const std::string& text, Range range) : text_(text), ends_(range.end) {
    std::vector<size_t> open[2];
    bool odd = false;
    for (size_t i = range.begin; i < range.end; ++i) {
      const char c = text[i];
      if (c == '"' && text[i - 1] != '\\') odd = !odd;
      if (c == '[' || c == '{') open[odd].push_back(i);
      if (c == ']' || c == '}') Close(i, open[odd]);
    }
  }

  // Where the bracket that the range begins with is closed within the range: the position of the closing bracket, the
  // range's end when there is none, or kNone when a bracket of the wrong kind comes first.
  size_t GetEndOfArrayOrObj(Range range) const {
    const End& end = ends_[range.begin];
    if (end.position >= range.end) return range.end;
    return end.matched ? end.position : kNone;
  }

 private:
  struct End {
    size_t position = kNone;
    bool matched = false;
  };

  void Close(size_t position, std::vector<size_t>& open) {
    if (open.empty()) return;
    const char opening = text_[position] == ']' ? '[' : '{';
    if (text_[open.back()] == opening) {
      ends_[open.back()] = {position, true};
      open.pop_back();
    } else {
      // Every search that is under way meets it.
      for (const size_t bracket : open) ends_[bracket] = {position, false};
      open.clear();
    }
  }

  const std::string& text_;
  // By the position of the opening bracket.
  std::vector<End> ends_;
};

// A bare literal, read character by character and classified at the end.
class Literal {
 public:
  // Takes the next character. Returns false when the literal can't be valid any more.
  bool Add(char c) {
    if (IsSpace(c)) return true;
    if (c == '[' || c == ']' || c == '{' || c == '}') return false;
    if (c == '.') {
      if (!digit_) return false;
      point_ = true;
    } else if (c == 'e' || c == 'E') {
      const bool inWord = EqualsIgnoringCase(token_, "fals") || EqualsIgnoringCase(token_, "tru");
      if (!inWord && (!digit_ || exponent_)) return false;
      exponent_ = exponent_ || !inWord;
    }
    digit_ = digit_ || IsDigit(c);
    token_ += c;
    return true;
  }

  // Sets value to what the literal means. Returns false when it means nothing.
  bool Classify(Value& value) const {
    if (EqualsIgnoringCase(token_, "true")) {
      value = Value(true);
    } else if (EqualsIgnoringCase(token_, "false")) {
      value = Value(false);
    } else if (point_ || exponent_) {
      return ReadDouble(value);
    } else if (!EqualsIgnoringCase(token_, "null")) {
      return ReadInteger(value);
    }
    return true;
  }

 private:
  bool IsEnd(const char* end) const { return end == token_.c_str() + token_.size(); }

  bool ReadInteger(Value& value) const {
    typedef std::numeric_limits<long> Long;
    char* end = nullptr;
    errno = 0;
    const long number = std::strtol(token_.c_str(), &end, 10);
    if (!IsEnd(end)) return false;
    if (errno == ERANGE && (number == Long::max() || number == Long::min())) return ReadDouble(value);
    // Numbers between int and long are refused, although those beyond long are read as doubles.
    if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max()) return false;
    value = Value(static_cast<int>(number));
    return true;
  }

  bool ReadDouble(Value& value) const {
    char* end = nullptr;
    errno = 0;
    const double number = std::strtod(token_.c_str(), &end);
    if (errno != 0 || !IsEnd(end)) return false;
    value = Value(number);
    return true;
  }

  std::string token_;
  bool digit_ = false;
  bool point_ = false;
  bool exponent_ = false;
};

// A complete object or array. Everything in it is a new value, which keeps nothing of one that it replaced: assigning
// leaves what a value of another type held.
class Container : public Value {
 public:
  explicit Container(std::map<std::string, Value>&& members) {
    mValueType = ObjectVal;
    for (auto& member : members) mObjectVal[member.first] = std::move(member.second);
  }
  explicit Container(std::vector<Value>&& elements) {
    mValueType = ArrayVal;
    for (Value& element : elements) {
      mArrayVal.push_back(Value());
      mArrayVal[mArrayVal.size() - 1] = std::move(element);
    }
  }
};

// An object or array that is being read.
struct Frame {
  StackDepthType type;
  // What is left of the text between the brackets.
  Range rest;
  // In an array the next place where an element ends or a bracket opens; out of date when it lies before the rest.
  size_t stop = 0;
  // Of the member that is being read.
  std::string key;
  // What has been read.
  std::map<std::string, Value> members;
  std::vector<Value> elements;

  Value Finish() { return type == InObject ? Value(Container(std::move(members))) : Container(std::move(elements)); }

  void Add(Value value) {
    if (type == InObject) {
      members[key] = std::move(value);
    } else if (value.GetType() != NullVal) {
      elements.push_back(std::move(value));
    }
  }
};

enum Outcome {
  kValue,   ///< A value has been read and added to the frame.
  kNested,  ///< An object or array begins. Its frame is on top now, and references to frames are no longer valid.
  kDone,    ///< The frame is complete.
  kError,
};

// Reads one text. Nested objects and arrays are frames on a stack of their own: a text may be nested as deep as
// memory allows.
class Parser {
 public:
  // The range begins with a bracket and ends with its counterpart.
  Parser(const std::string& text, Range range) : text_(text), ends_(text, range) { Push(range); }

  Value Run() {
    for (;;) {
      Frame& frame = frames_.back();
      const Outcome outcome = frame.type == InObject ? DeserializeObj(frame) : DeserializeArray(frame);
      if (outcome == kNested) continue;
      // An error goes no further than the object or array it is in: the one around it sees null.
      Value value = outcome == kDone ? frame.Finish() : Value();
      frames_.pop_back();
      if (frames_.empty()) return value;
      frames_.back().Add(std::move(value));
    }
  }

 private:
  void Push(Range brackets) {
    Frame frame;
    frame.type = text_[brackets.begin] == '{' ? InObject : InArray;
    frame.rest = {brackets.begin + 1, brackets.end - 1};
    frames_.push_back(std::move(frame));
  }

  Outcome DeserializeObj(Frame& frame) {
    Range& rest = frame.rest;
    while (!rest.empty()) {
      const size_t keyQuote = GetQuotePos(text_, rest);
      if (keyQuote == kNone) return kError;
      const size_t endQuote = GetQuotePos(text_, {keyQuote + 1, rest.end});
      if (endQuote == kNone || endQuote == keyQuote + 1) return kError;
      size_t colon = endQuote + 1;
      while (colon < rest.end && text_[colon] != ':') ++colon;
      if (colon == rest.end) return kError;
      frame.key = text_.substr(keyQuote + 1, endQuote - keyQuote - 1);
      rest.begin = colon + 1;
      const Outcome outcome = DeserializeValue(rest, frame);
      if (outcome != kValue) return outcome;
    }
    return kDone;
  }

  Outcome DeserializeArray(Frame& frame) {
    Range& rest = frame.rest;
    while (!rest.empty()) {
      size_t& stop = frame.stop;
      // The array's own closing bracket ends the search at the latest.
      if (stop < rest.begin) stop = text_.find_first_of(",][{", rest.begin);
      Outcome outcome;
      if (stop < rest.end && (text_[stop] == '[' || text_[stop] == '{')) {
        // Everything up to the bracket is part of the value, which may well be a string or a fault.
        outcome = DeserializeValue(rest, frame);
      } else {
        Range element = {rest.begin, std::min(stop, rest.end)};
        rest.begin = element.end + 1;
        outcome = DeserializeValue(element, frame);
      }
      if (outcome != kValue) return outcome;
    }
    return kDone;
  }

  // Reads one value from the rest, takes it away from there and adds it to the frame.
  Outcome DeserializeValue(Range& rest, Frame& frame) {
    rest = Trim(text_, rest);
    Value value;
    if (!rest.empty()) {
      const char first = text_[rest.begin];
      if (first == '[' || first == '{') return BeginNested(rest);
      if (!(first == '"' ? ReadString(rest, value) : ReadLiteral(rest, value))) return kError;
    }
    frame.Add(std::move(value));
    return kValue;
  }

  Outcome BeginNested(Range& rest) {
    const size_t end = ends_.GetEndOfArrayOrObj(rest);
    if (end == kNone) return kError;
    if (end == rest.end) throw std::out_of_range("json bracket is not closed");
    const Range nested = {rest.begin, end + 1};
    rest.begin = end + 1;
    Push(nested);
    return kNested;
  }

  bool ReadString(Range& rest, Value& value) const {
    const size_t begin = rest.begin + 1;
    const size_t end = GetQuotePos(text_, {begin, rest.end});
    if (end == kNone) return false;
    value = Value(UnescapeJSONString(std::string_view(text_).substr(begin, end - begin)));
    rest.begin = end + 1;
    return true;
  }

  bool ReadLiteral(Range& rest, Value& value) const {
    Literal literal;
    while (!rest.empty() && text_[rest.begin] != ',') {
      if (!literal.Add(text_[rest.begin])) return false;
      ++rest.begin;
    }
    return literal.Classify(value);
  }

  const std::string& text_;
  const BracketEnds ends_;
  std::vector<Frame> frames_;
};

Value DeserializeInternal(const std::string& text) {
  const Range range = Trim(text, {0, text.size()});
  if (range.empty()) return Value();
  const char first = text[range.begin];
  const char last = text[range.end - 1];
  const bool bracketed = (first == '{' && last == '}') || (first == '[' && last == ']');
  return bracketed ? Parser(text, range).Run() : Value();
}

}  // namespace

Value Deserialize(const std::string& text) {
  return DeserializeInternal(text);
}

}  // namespace json
