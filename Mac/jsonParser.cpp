#include "json.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <limits>
#include <stdexcept>
#include <string_view>
#include <tuple>
#include <utility>

namespace json {

/// What a bracket encloses.
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
  // Most keys and values are short, and end before a search that is made for long texts gets going.
  const size_t nearEnd = std::min(range.end, range.begin + 24);
  size_t begin = range.begin;
  for (; begin < nearEnd; ++begin) {
    if (text[begin] == '"') return begin;
    if (text[begin] == '\\') break;
  }
  const std::string_view view = std::string_view(text).substr(0, range.end);
  size_t quote = view.find('"', begin);
  while (quote != kNone) {
    const size_t backslash = view.substr(0, quote).find('\\', begin);
    if (backslash == kNone) return quote;
    // The character after a backslash is never special, another backslash included.
    begin = backslash + 2;
    if (begin > quote) quote = view.find('"', begin);
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

/// Sets out to the text with its escapes replaced.
void UnescapeJSONString(std::string_view text, std::string& out) {
  out.clear();
  size_t next = 0;
  while (next < text.size()) {
    const size_t backslash = text.find('\\', next);
    // A backslash at the very end stands for itself.
    if (backslash == kNone || backslash + 1 == text.size()) break;
    out.append(text, next, backslash - next);
    static constexpr std::string_view kLetters = "\"/\\bfnrt";
    static constexpr std::string_view kMeanings = "\"/\\\b\f\n\r\t";
    const char letter = text[backslash + 1];
    if (letter == 'u') {
      AppendLowByte(text, backslash, out);
      next = backslash + 6;
      continue;
    }
    const size_t known = kLetters.find(letter);
    if (known != kNone) out.push_back(kMeanings[known]);
    next = backslash + 2;
  }
  if (next < text.size()) out.append(text, next, text.size() - next);
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
  BracketTable(const std::string& text, Range range) : text_(text) {
    brackets_.reserve(static_cast<size_t>(std::count(text.begin(), text.end(), '[')) +
                      static_cast<size_t>(std::count(text.begin(), text.end(), '{')));
    size_t i = range.begin;
    for (; i + kBlock <= range.end; i += kBlock) {
      for (std::uint64_t marks = FindMarks(text.data() + i); marks != 0; marks &= marks - 1) {
        Take(i + static_cast<size_t>(__builtin_ctzll(marks)) / 8);
      }
    }
    for (; i < range.end; ++i) Take(i);
    EndAll(kNever, open_[0]);
    EndAll(kNever, open_[1]);
  }

  /// The number of opening brackets.
  size_t size() const { return brackets_.size(); }

  /// Where the bracket that the range begins with is closed within the range: the position of the closing bracket, the
  /// range's end when there is none, or kNone when a bracket of the wrong kind comes first. Brackets must be asked for
  /// in the order of the text.
  size_t GetEndOfArrayOrObj(Range range) {
    while (brackets_[next_].open < range.begin) ++next_;
    const Bracket& bracket = brackets_[next_];
    if (bracket.end >= range.end) return range.end;
    return bracket.matched ? bracket.end : kNone;
  }

 private:
  /// A position and an index beyond every text.
  static constexpr size_t kNever = std::numeric_limits<size_t>::max() / 2;

  struct Bracket {
    size_t open;
    /// While the bracket is open, the index of the one of its class around it.
    size_t end : std::numeric_limits<size_t>::digits - 1;
    size_t matched : 1;
  };

  static constexpr size_t kBlock = sizeof(std::uint64_t);
  static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the first character of a block is its lowest byte");

  static constexpr std::uint64_t Repeat(unsigned char byte) { return 0x0101010101010101u * byte; }

  /// The top bit of every byte that is zero.
  static std::uint64_t ZeroBytes(std::uint64_t block) {
    constexpr std::uint64_t kLow = Repeat(0x7F);
    return ~(((block & kLow) + kLow) | block | kLow);
  }

  /// The top bit of every byte of the next kBlock characters that is a quote or a bracket, or one of the few others
  /// that equal brackets in the bits that all brackets share. Looking for several characters at once is what makes the
  /// pass cheap: they are too frequent to be guessed by the processor, one by one.
  static std::uint64_t FindMarks(const char* characters) {
    constexpr unsigned char kBracketBits = static_cast<unsigned char>('[' & ']' & '{' & '}');
    constexpr unsigned char kOtherBits = static_cast<unsigned char>(('[' | ']' | '{' | '}') ^ kBracketBits);
    constexpr unsigned char kMask = static_cast<unsigned char>(~kOtherBits);
    std::uint64_t block;
    std::memcpy(&block, characters, kBlock);
    return ZeroBytes(block ^ Repeat('"')) | ZeroBytes((block & Repeat(kMask)) ^ Repeat(kBracketBits));
  }

  void Take(size_t position) {
    switch (text_[position]) {
      case '"':
        if (text_[position - 1] != '\\') odd_ = !odd_;
        break;
      case '{':
      case '[':
        brackets_.push_back({position, open_[odd_], 0});
        open_[odd_] = brackets_.size() - 1;
        break;
      case '}':
        Close(position, InObject, open_[odd_]);
        break;
      case ']':
        Close(position, InArray, open_[odd_]);
        break;
      default:
        break;
    }
  }

  void Close(size_t position, StackDepthType kind, size_t& open) {
    if (open == kNever) return;
    Bracket& innermost = brackets_[open];
    if (text_[innermost.open] != (kind == InObject ? '{' : '[')) return EndAll(position, open);
    open = innermost.end;
    innermost.end = position;
    innermost.matched = 1;
  }

  /// Ends every search of a class that is under way.
  void EndAll(size_t position, size_t& open) {
    while (open != kNever) {
      Bracket& bracket = brackets_[open];
      open = bracket.end;
      bracket.end = position;
    }
  }

  const std::string& text_;
  std::vector<Bracket> brackets_;
  /// Whether the number of quotes so far is odd, which is the class of the next bracket.
  bool odd_ = false;
  /// Index of the innermost open bracket of either class.
  size_t open_[2] = {kNever, kNever};
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
    } else if (EqualsIgnoringCase(token_, "null")) {
      value.Clear();
    } else {
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
  /// What is left of the text between the brackets.
  Range rest;
  /// Where it is built. Has its type already.
  Value* target;
};

enum Outcome {
  kValue,   ///< A value has been read.
  kNested,  ///< An object or array begins; its frame is on top now.
  kDone,    ///< The frame on top is complete.
  kError,
};

}  // namespace

/// Reads one text. Nested objects and arrays are frames on a stack of their own: a text may be nested as deep as
/// memory allows. Every value is built at its place in the tree, which stays where it is while it is being read.
class Parser {
 public:
  Parser(const std::string& text, Range range) : text_(text), brackets_(text, range) {
    // Deeper than this it cannot get. What is not used costs nothing, growing step by step would.
    frames_.reserve(brackets_.size());
  }

  /// Reads the range, which begins with a bracket and ends with its counterpart.
  Value Run(ValueType type, Range range) {
    Push(type, range, root_, true);
    while (!frames_.empty()) {
      Frame& frame = frames_.back();
      const bool inObject = frame.target->mValueType == ObjectVal;
      const Outcome outcome = inObject ? DeserializeObj(frame) : DeserializeArray(frame);
      if (outcome != kNested) Pop(outcome == kDone);
    }
    return std::move(root_);
  }

 private:
  /// What is being read for a member whose key was there before.
  struct Replacement {
    Value value;
    Value* slot;
  };

  void Push(ValueType type, Range brackets, Value& slot, bool isNew) {
    if (!isNew) replacements_.push_back({Value(), &slot});
    Value& target = isNew ? slot : replacements_.back().value;
    target.mValueType = type;
    frames_.push_back({{brackets.begin + 1, brackets.end - 1}, &target});
  }

  /// An error goes no further than the object or array it is in: the one around it sees null.
  void Pop(bool complete) {
    Value& target = *frames_.back().target;
    frames_.pop_back();
    if (!complete) {
      target.Clear();
      target.mObjectVal.Clear();
      target.mArrayVal.Clear();
    }
    if (!replacements_.empty() && &target == &replacements_.back().value) {
      *replacements_.back().slot = std::move(target);
      replacements_.pop_back();
    }
    if (!frames_.empty() && frames_.back().target->mValueType == ArrayVal) DropNull(*frames_.back().target);
  }

  /// An array leaves nulls out.
  static void DropNull(Value& target) {
    Array::Vector& elements = target.mArrayVal.mValues;
    if (elements.back().mValueType == NullVal) elements.pop_back();
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
      frame.rest.begin = colon + 1;
      // Unlike the other ways of adding a member, this one compares keys no more often than it must.
      const auto [member, isNew] = frame.target->mObjectVal.mValues.emplace(
          std::piecewise_construct, std::forward_as_tuple(text_, keyQuote + 1, endQuote - keyQuote - 1),
          std::forward_as_tuple());
      const Outcome outcome = DeserializeValue(frame.rest, member->second, isNew);
      if (outcome != kValue) return outcome;
    }
    return kDone;
  }

  /// The next place in the array where an element ends or a bracket opens, or the end of the rest.
  size_t NextStop(Range rest) {
    // What was scanned before lies before the rest, or in it up to its first stop.
    if (scanned_ < rest.begin) scanned_ = rest.begin;
    while (scanned_ < rest.end) {
      const char c = text_[scanned_];
      if (c == ',' || c == ']' || c == '[' || c == '{') break;
      ++scanned_;
    }
    return scanned_;
  }

  Outcome DeserializeArray(Frame& frame) {
    while (!frame.rest.empty()) {
      const size_t stop = NextStop(frame.rest);
      const bool ends = stop < frame.rest.end;
      const bool nested = ends && (text_[stop] == '[' || text_[stop] == '{');
      Range element = {frame.rest.begin, stop};
      if (!nested) {
        frame.rest.begin = ends ? stop + 1 : stop;
        if (Trim(text_, element).empty()) continue;
      }
      // Where a bracket follows, everything up to it is part of the value, which may well be a string or a fault.
      Value& value = frame.target->mArrayVal.mValues.emplace_back();
      const Outcome outcome = DeserializeValue(nested ? frame.rest : element, value, true);
      if (outcome != kValue) return outcome;
      DropNull(*frame.target);
    }
    return kDone;
  }

  /// Reads one value from the rest, takes it away from there and assigns it. isNew tells that the value was not
  /// assigned before.
  Outcome DeserializeValue(Range& rest, Value& value, bool isNew) {
    rest = Trim(text_, rest);
    if (rest.empty()) {
      value.Clear();
      return kValue;
    }
    switch (text_[rest.begin]) {
      case '[':
        return DeserializeNested(ArrayVal, rest, value, isNew);
      case '{':
        return DeserializeNested(ObjectVal, rest, value, isNew);
      case '"':
        return DeserializeString(rest, value);
      default:
        return DeserializeLiteral(rest, value);
    }
  }

  Outcome DeserializeNested(ValueType type, Range& rest, Value& slot, bool isNew) {
    const size_t end = brackets_.GetEndOfArrayOrObj(rest);
    if (end == kNone) return kError;
    if (end == rest.end) throw std::out_of_range("json bracket is not closed");
    const Range nested = {rest.begin, end + 1};
    rest.begin = end + 1;
    Push(type, nested, slot, isNew);
    return kNested;
  }

  Outcome DeserializeString(Range& rest, Value& value) {
    const size_t begin = rest.begin + 1;
    const size_t end = GetQuotePos(text_, {begin, rest.end});
    if (end == kNone) return kError;
    UnescapeJSONString(std::string_view(text_).substr(begin, end - begin), value.mStringVal);
    value.mValueType = StringVal;
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
  std::deque<Replacement> replacements_;
  /// Up to here the array on top has been searched for the end of its next element.
  size_t scanned_ = 0;
  Value root_;
};

namespace {

Value DeserializeInternal(const std::string& text) {
  const Range range = Trim(text, {0, text.size()});
  if (range.empty()) return Value();
  const char first = text[range.begin];
  const char last = text[range.end - 1];
  if (first == '{' && last == '}') return Parser(text, range).Run(ObjectVal, range);
  if (first == '[' && last == ']') return Parser(text, range).Run(ArrayVal, range);
  return Value();
}

}  // namespace

Value Deserialize(const std::string& text) {
  return DeserializeInternal(text);
}

}  // namespace json
