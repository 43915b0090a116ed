#include "json_reference_parser.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <map>
#include <optional>
#include <stdexcept>

namespace json_reference {

namespace {

using json::Value;

constexpr size_t kNone = std::string::npos;
const std::string kSpaces = " \t\n\v\f\r";

bool IsOneOf(char c, const std::string& set) {
  return set.find(c) != kNone;
}

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
  return text;
}

std::string Trim(std::string text) {
  text.erase(0, text.find_first_not_of(kSpaces));
  return text.substr(0, text.find_last_not_of(kSpaces) + 1);
}

size_t GetQuotePos(const std::string& text, size_t start) {
  bool escape = false;
  for (size_t i = start; i < text.size(); ++i) {
    if (text[i] == '"' && !escape) return i;
    escape = text[i] == '\\' && !escape;
  }
  return kNone;
}

// The place of the counterpart of the first bracket, npos when one of the wrong kind comes first, or the text's
// length.
size_t GetEndOfArrayOrObj(const std::string& text) {
  std::string closing;
  bool inString = false;
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '"' && text[i - 1] != '\\') inString = !inString;
    if (inString) continue;
    if (IsOneOf(c, "[{")) closing += c == '[' ? ']' : '}';
    if (!IsOneOf(c, "]}")) continue;
    if (closing.back() != c) return kNone;
    closing.pop_back();
    if (closing.empty()) return i;
  }
  return text.size();
}

// The byte of up to two hexadecimal digits; nothing when the first character is none.
std::string LowByte(std::string digits) {
  while (digits.find_first_not_of("0123456789abcdefABCDEF") != kNone) digits.pop_back();
  return digits.empty() ? "" : std::string(1, static_cast<char>(std::stoi(digits, nullptr, 16)));
}

std::string UnescapeJSONString(const std::string& text) {
  static const std::map<char, char> kEscapes = {{'"', '"'},  {'/', '/'},  {'\\', '\\'}, {'b', '\b'},
                                                {'f', '\f'}, {'n', '\n'}, {'r', '\r'},  {'t', '\t'}};
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool escape = text[i] == '\\' && i + 1 < text.size();
    if (!escape) {
      out += text[i];
    } else if (text[++i] == 'u') {
      out += LowByte(text.substr(std::min(i + 3, text.size()), 2));
      i += 4;
    } else if (kEscapes.count(text[i]) != 0) {
      out += kEscapes.at(text[i]);
    }
  }
  return out;
}

Value Fail(bool* error) {
  *error = true;
  return Value();
}

Value DeserializeNumber(const std::string& token, bool integer, bool* error) {
  const char* const tokenEnd = token.c_str() + token.size();
  char* end = nullptr;
  errno = 0;
  if (integer) {
    const long number = std::strtol(token.c_str(), &end, 10);
    if (end != tokenEnd) return Fail(error);
    if (errno == 0) return number == static_cast<int>(number) ? Value(static_cast<int>(number)) : Fail(error);
    errno = 0;
  }
  const double number = std::strtod(token.c_str(), &end);
  return errno == 0 && end == tokenEnd ? Value(number) : Fail(error);
}

Value DeserializeLiteral(const std::string& text, bool* error) {
  std::string token;
  bool digit = false;
  bool point = false;
  bool exponent = false;
  for (const char c : text) {
    const std::string word = Lower(token);
    const bool isExponent = IsOneOf(c, "eE") && word != "fals" && word != "tru";
    if ((c == '.' && !digit) || (isExponent && (!digit || exponent)) || IsOneOf(c, "[]{}")) return Fail(error);
    digit = digit || IsOneOf(c, "0123456789");
    point = point || c == '.';
    exponent = exponent || isExponent;
    if (!IsOneOf(c, kSpaces)) token += c;
  }
  const std::string word = Lower(token);
  if (word == "true" || word == "false") return Value(word == "true");
  return word == "null" ? Value() : DeserializeNumber(token, !point && !exponent, error);
}

// Reads the value at the beginning of the text and cuts it off.
Value DeserializeValue(std::string& text, bool* error) {
  text = Trim(text);
  if (text.empty()) return Value();
  const bool string = text[0] == '"';
  if (!string && text[0] != '[' && text[0] != '{') {
    const std::string literal = text.substr(0, text.find(','));
    text = text.substr(literal.size());
    return DeserializeLiteral(literal, error);
  }
  const size_t end = string ? GetQuotePos(text, 1) : GetEndOfArrayOrObj(text);
  if (end == kNone) return Fail(error);
  const std::string value = text.substr(0, end + 1);
  text = text.substr(end + 1);
  return string ? Value(UnescapeJSONString(value.substr(1, value.size() - 2))) : Deserialize(value);
}

Value DeserializeArray(std::string rest) {
  json::Array array;
  bool error = false;
  while (!rest.empty()) {
    const size_t stop = std::min(rest.find_first_of(",][{"), rest.size());
    const bool nested = stop < rest.size() && (rest[stop] == '[' || rest[stop] == '{');
    // Where a bracket opens, everything up to it belongs to the value.
    std::string element = nested ? rest : rest.substr(0, stop);
    const Value value = DeserializeValue(element, &error);
    if (error) return Value();
    if (value.GetType() != json::NullVal) array.push_back(value);
    rest = nested ? element : rest.substr(std::min(stop + 1, rest.size()));
  }
  return Value(array);
}

Value DeserializeObj(std::string rest) {
  json::Object object;
  bool error = false;
  while (!rest.empty()) {
    const size_t first = GetQuotePos(rest, 0);
    if (first == kNone) return Value();
    const size_t second = GetQuotePos(rest, first + 1);
    if (second == kNone || second == first + 1) return Value();
    const size_t colon = rest.find(':', second);
    if (colon == kNone) return Value();
    const std::string key = rest.substr(first + 1, second - first - 1);
    rest = rest.substr(colon + 1);
    object[key] = DeserializeValue(rest, &error);
    if (error) return Value();
  }
  return Value(object);
}

// Nothing when parsing throws.
std::optional<Value> Outcome(Value (*parse)(const std::string&), const std::string& text) {
  try {
    return parse(text);
  } catch (const std::out_of_range&) {
    return std::nullopt;
  }
}

}  // namespace

json::Value Deserialize(const std::string& original) {
  const std::string text = Trim(original);
  if (text.size() < 2) return Value();
  const std::string inside = text.substr(1, text.size() - 2);
  if (text.front() == '{' && text.back() == '}') return DeserializeObj(inside);
  if (text.front() == '[' && text.back() == ']') return DeserializeArray(inside);
  return Value();
}

bool RealParserAgrees(const std::string& text) {
  const std::optional<Value> expected = Outcome(Deserialize, text);
  const std::optional<Value> real = Outcome(json::Deserialize, text);
  if (!expected || !real) return !expected && !real;
  // Equality does not tell types apart, compact text does not show all digits.
  const std::string compact = json::Serialize(*expected);
  if (json::Serialize(*real) != compact) return false;
  // NaN is unequal to itself.
  return *real == *expected || compact.find("nan") != kNone;
}

}  // namespace json_reference
