#include "json.h"

#include <cerrno>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace json {

/// What an open bracket has opened.
enum StackDepthType { InObject = 0, InArray = 1 };

namespace {

constexpr size_t kNone = std::string_view::npos;

// The sets below are those of the C library's default locale, whatever locale the host has set.
bool IsSpace(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
char ToLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EqualsIgnoringCase(const std::string& text, std::string_view lower) {
  if (text.size() != lower.size()) return false;
  for (size_t i = 0; i < text.size(); ++i) {
    if (ToLower(text[i]) != lower[i]) return false;
  }
  return true;
}

/// A part of the text: the characters from begin up to, not including, end.
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

/// Where in the range the first quote is that no backslash escapes, or kNone.
size_t GetQuotePos(const std::string& text, Range range) {
  for (size_t i = range.begin; i < range.end; ++i) {
    if (text[i] == '"') return i;
    // The character after a backslash is never special, another backslash included.
    if (text[i] == '\\') ++i;
  }
  return kNone;
}

int HexDigit(char c) {
  if (IsDigit(c)) return c - '0';
  const char lower = ToLower(c);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// Appends the low byte of the escape whose backslash is at position. Digits that are missing add nothing.
void AppendLowByte(std::string_view text, size_t position, std::string& out) {
  int byte = -1;
  for (size_t i = position + 4; i < position + 6 && i < text.size(); ++i) {
    const int digit = HexDigit(text[i]);
    if (digit < 0) break;
    byte = (byte < 0 ? 0 : byte * 16) + digit;
  }
  if (byte >= 0) out.push_back(static_cast<char>(byte));
}

std::string UnescapeJSONString(std::string_view text) {
  size_t next = text.find('\\');
  if (next == kNone) return std::string(text);
  std::string out(text.substr(0, next));
  while (next < text.size()) {
    if (text[next] != '\\' || next + 1 == text.size()) {
      out.push_back(text[next++]);
      continue;
    }
    static constexpr std::string_view kLetters = "\"/\\bfnrt";
    static constexpr std::string_view kMeanings = "\"/\\\b\f\n\r\t";
    const char letter = text[next + 1];
    if (letter == 'u') {
      AppendLowByte(text, next, out);
      next += 6;
      continue;
    }
    const size_t known = kLetters.find(letter);
    if (known != kNone) out.push_back(kMeanings[known]);
    next += 2;
  }
  return out;
}

/// For every opening bracket of a text the place where a search for its end ends: at the matching closing bracket or at
/// one of the wrong kind. Made in one pass, so that nesting costs nothing.
///
/// A search that begins at a bracket takes every quote without a backslash before it as the begin or end of a string,
/// and passes over strings. So it sees exactly the brackets with an even number of such quotes between them and its
/// begin: all brackets of a text fall into two classes that don't see each other, and each class is matched by itself.
class BracketTable {
 public:
  /// The range begins with a bracket.
  BracketTable(const std::string& text, Range range) {
    bool odd = false;
    for (size_t i = range.begin; i < range.end; ++i) {
      switch (text[i]) {
        case '"':
          if (text[i - 1] != '\\') odd = !odd;
          break;
        case '{':
          Open(i, InObject, open_[odd]);
          break;
        case '[':
          Open(i, InArray, open_[odd]);
          break;
        case '}':
          Close(i, InObject, open_[odd]);
          break;
        case ']':
          Close(i, InArray, open_[odd]);
          break;
        default:
          break;
      }
    }
  }

  /// Where the bracket at position, which is the first of the range, is closed within the range: the position of the
  /// closing bracket, the range's end when there is none, or kNone when a bracket of the wrong kind comes first.
  /// Positions must be asked for in ascending order.
  size_t GetEndOfArrayOrObj(Range range) {
    while (brackets_[next_].open < range.begin) ++next_;
    const Bracket& bracket = brackets_[next_];
    if (bracket.end >= range.end) return range.end;
    return bracket.matched ? bracket.end : kNone;
  }

 private:
  struct Bracket {
    size_t open;
    size_t end = kNone;
    StackDepthType kind;
    bool matched = false;
  };

  void Open(size_t position, StackDepthType kind, std::vector<size_t>& open) {
    open.push_back(brackets_.size());
    brackets_.push_back({position, kNone, kind, false});
  }

  void Close(size_t position, StackDepthType kind, std::vector<size_t>& open) {
    if (open.empty()) return;
    Bracket& innermost = brackets_[open.back()];
    if (innermost.kind == kind) {
      innermost.end = position;
      innermost.matched = true;
      open.pop_back();
      return;
    }
    // Every search that is under way ends here.
    for (size_t index : open) brackets_[index].end = position;
    open.clear();
  }

  std::vector<Bracket> brackets_;
  std::vector<size_t> open_[2];
  size_t next_ = 0;
};

/// A bare literal, read character by character and classified at the end.
class Literal {
 public:
  /// Takes the next character. Returns false when the literal can't be valid any more.
  bool Add(char c) {
    switch (c) {
      case '.':
        if (!digit_) return false;
        point_ = true;
        break;
      case 'e':
      case 'E':
        if (EqualsIgnoringCase(token_, "fals") || EqualsIgnoringCase(token_, "tru")) break;
        if (!digit_ || exponent_) return false;
        exponent_ = true;
        break;
      case '[':
      case ']':
      case '{':
      case '}':
        return false;
      default:
        if (IsSpace(c)) return true;
        digit_ = digit_ || IsDigit(c);
        break;
    }
    token_.push_back(c);
    return true;
  }

  /// Sets value to what the literal means. Returns false when it means nothing.
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
    char* end = nullptr;
    errno = 0;
    const long number = std::strtol(token_.c_str(), &end, 10);
    if (!IsEnd(end)) return false;
    typedef std::numeric_limits<long> Long;
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

/// An object or array that is being read.
struct Frame {
  StackDepthType kind;
  /// What is left of the text between the brackets.
  Range rest;
  /// Array: a position in rest before which no element ends or begins, when it lies in rest at all.
  size_t scanned = 0;
  /// Object: the key of the member whose value is being read.
  std::string key;
  Object object;
  Array array;
};

enum Outcome {
  kValue,   ///< A value has been read.
  kNested,  ///< An object or array begins; its frame is on top now.
  kDone,    ///< The frame on top is complete.
  kError,
};

/// Reads one text. Nested objects and arrays are frames on a stack of their own: a text may be nested as deep as
/// memory allows.
class Parser {
 public:
  Parser(const std::string& text, Range range) : text_(text), brackets_(text, range) {}

  /// Reads the range, which begins with a bracket of that kind and ends with its counterpart.
  Value Run(StackDepthType kind, Range range) {
    Push(kind, range);
    while (true) {
      const bool inObject = frames_.back().kind == InObject;
      const Outcome outcome = inObject ? DeserializeObj(frames_.back()) : DeserializeArray(frames_.back());
      if (outcome == kNested) continue;
      Frame& frame = frames_.back();
      Value value;
      // An error goes no further than the object or array it is in: the one around it sees null.
      if (outcome == kDone) value = inObject ? Value(std::move(frame.object)) : Value(std::move(frame.array));
      frames_.pop_back();
      if (frames_.empty()) return value;
      Store(frames_.back(), std::move(value));
    }
  }

 private:
  void Push(StackDepthType kind, Range brackets) {
    frames_.emplace_back();
    frames_.back().kind = kind;
    frames_.back().rest = {brackets.begin + 1, brackets.end - 1};
    frames_.back().scanned = brackets.begin + 1;
  }

  static void Store(Frame& frame, Value&& value) {
    if (frame.kind == InObject) {
      frame.object[std::move(frame.key)] = std::move(value);
    } else if (value.GetType() != NullVal) {
      frame.array.push_back(std::move(value));
    }
  }

  Outcome DeserializeObj(Frame& frame) {
    while (!frame.rest.empty()) {
      const size_t keyQuote = GetQuotePos(text_, frame.rest);
      if (keyQuote == kNone) return kError;
      const size_t endQuote = GetQuotePos(text_, {keyQuote + 1, frame.rest.end});
      if (endQuote == kNone || endQuote == keyQuote + 1) return kError;
      size_t colon = endQuote + 1;
      while (colon < frame.rest.end && text_[colon] != ':') ++colon;
      if (colon == frame.rest.end) return kError;
      frame.key.assign(text_, keyQuote + 1, endQuote - keyQuote - 1);
      frame.rest.begin = colon + 1;
      Value value;
      const Outcome outcome = DeserializeValue(frame.rest, value);
      if (outcome != kValue) return outcome;
      Store(frame, std::move(value));
    }
    return kDone;
  }

  /// The next place in the array where an element ends or a bracket opens, or the end of the rest.
  size_t NextStop(Frame& frame) const {
    size_t& stop = frame.scanned;
    if (stop < frame.rest.begin) stop = frame.rest.begin;
    while (stop < frame.rest.end) {
      const char c = text_[stop];
      if (c == ',' || c == ']' || c == '[' || c == '{') break;
      ++stop;
    }
    return stop;
  }

  Outcome DeserializeArray(Frame& frame) {
    while (!frame.rest.empty()) {
      const size_t stop = NextStop(frame);
      Value value;
      Outcome outcome;
      if (stop < frame.rest.end && (text_[stop] == '[' || text_[stop] == '{')) {
        outcome = DeserializeValue(frame.rest, value);
      } else {
        Range element = {frame.rest.begin, stop};
        frame.rest.begin = stop < frame.rest.end ? stop + 1 : stop;
        outcome = DeserializeValue(element, value);
      }
      if (outcome != kValue) return outcome;
      Store(frame, std::move(value));
    }
    return kDone;
  }

  /// Reads one value from the rest and takes it away from there.
  Outcome DeserializeValue(Range& rest, Value& value) {
    rest = Trim(text_, rest);
    if (rest.empty()) return kValue;
    switch (text_[rest.begin]) {
      case '[':
        return DeserializeNested(InArray, rest);
      case '{':
        return DeserializeNested(InObject, rest);
      case '"':
        return DeserializeString(rest, value);
      default:
        return DeserializeLiteral(rest, value);
    }
  }

  Outcome DeserializeNested(StackDepthType kind, Range& rest) {
    const size_t end = brackets_.GetEndOfArrayOrObj(rest);
    if (end == kNone) return kError;
    if (end == rest.end) throw std::out_of_range("json bracket is not closed");
    const Range nested = {rest.begin, end + 1};
    rest.begin = end + 1;
    Push(kind, nested);
    return kNested;
  }

  Outcome DeserializeString(Range& rest, Value& value) {
    const size_t begin = rest.begin + 1;
    const size_t end = GetQuotePos(text_, {begin, rest.end});
    if (end == kNone) return kError;
    value = Value(UnescapeJSONString(std::string_view(text_).substr(begin, end - begin)));
    rest.begin = end + 1;
    return kValue;
  }

  Outcome DeserializeLiteral(Range& rest, Value& value) {
    Literal literal;
    while (!rest.empty() && text_[rest.begin] != ',') {
      if (!literal.Add(text_[rest.begin])) return kError;
      ++rest.begin;
    }
    return literal.Classify(value) ? kValue : kError;
  }

  const std::string& text_;
  BracketTable brackets_;
  std::vector<Frame> frames_;
};

Value DeserializeInternal(const std::string& text) {
  const Range range = Trim(text, {0, text.size()});
  if (range.empty()) return Value();
  const char first = text[range.begin];
  const char last = text[range.end - 1];
  if (first == '{' && last == '}') return Parser(text, range).Run(InObject, range);
  if (first == '[' && last == ']') return Parser(text, range).Run(InArray, range);
  return Value();
}

}  // namespace

Value Deserialize(const std::string& text) {
  return DeserializeInternal(text);
}

}  // namespace json
