#include "json_reference_parser.h"

#include <strings.h>

#include <cctype>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <stack>

namespace json_reference {

namespace {

using json::Value;

enum Depth { kInObject, kInArray };
typedef std::stack<Depth, std::deque<Depth>> DepthStack;

Value DeserializeObj(std::string text, DepthStack& depth);
Value DeserializeArray(std::string& text, DepthStack& depth);

bool IsSpace(char c) {
  return c != '\0' && std::strchr(" \t\n\v\f\r", c) != nullptr;
}

std::string Trim(std::string text) {
  while (!text.empty() && IsSpace(text.front())) text.erase(0, 1);
  while (!text.empty() && IsSpace(text.back())) text.pop_back();
  return text;
}

size_t GetQuotePos(const std::string& text, size_t start) {
  bool escape = false;
  for (size_t i = start; i < text.size(); ++i) {
    if (text[i] == '"' && !escape) return i;
    escape = text[i] == '\\' && !escape;
  }
  return std::string::npos;
}

size_t GetEndOfArrayOrObj(const std::string& text, DepthStack& depth) {
  const size_t sizeAtEntry = depth.size();
  bool inString = false;
  size_t i = 1;
  for (; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '"') {
      if (text[i - 1] != '\\') inString = !inString;
    } else if (!inString && (c == '[' || c == '{')) {
      depth.push(c == '[' ? kInArray : kInObject);
    } else if (!inString && (c == ']' || c == '}')) {
      if (depth.top() != (c == ']' ? kInArray : kInObject)) return std::string::npos;
      const size_t size = depth.size();
      depth.pop();
      if (size == sizeAtEntry) return i;
    }
  }
  return i;
}

std::string UnescapeJSONString(const std::string& text) {
  std::string out;
  for (size_t i = 0; i < text.size();) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      out += text[i++];
      continue;
    }
    const char letter = text[i + 1];
    if (letter == 'u') {
      std::string digits = i + 4 < text.size() ? text.substr(i + 4, 2) : "";
      if (digits.size() == 2 && !std::isxdigit(static_cast<unsigned char>(digits[1]))) digits.pop_back();
      if (!digits.empty() && std::isxdigit(static_cast<unsigned char>(digits[0]))) {
        out += static_cast<char>(std::stoi(digits, nullptr, 16));
      }
      i += 6;
      continue;
    }
    static const char kLetters[] = "\"/\\bfnrt";
    const char* const known = letter == '\0' ? nullptr : std::strchr(kLetters, letter);
    if (known != nullptr) out += "\"/\\\b\f\n\r\t"[known - kLetters];
    i += 2;
  }
  return out;
}

Value Fail(bool* error) {
  *error = true;
  return Value();
}

bool EqualsAnyCase(const std::string& token, const char* word) {
  return token.size() == std::strlen(word) && strcasecmp(token.c_str(), word) == 0;
}

Value ReadDouble(const std::string& token, bool* error) {
  char* end;
  errno = 0;
  const double number = std::strtod(token.c_str(), &end);
  if (errno != 0 || end != token.c_str() + token.size()) return Fail(error);
  return Value(number);
}

Value Classify(const std::string& token, bool point, bool exponent, bool* error) {
  if (EqualsAnyCase(token, "true")) return Value(true);
  if (EqualsAnyCase(token, "false")) return Value(false);
  if (point || exponent) return ReadDouble(token, error);
  if (EqualsAnyCase(token, "null")) return Value();
  char* end;
  errno = 0;
  const long number = std::strtol(token.c_str(), &end, 10);
  if (end != token.c_str() + token.size()) return Fail(error);
  if (errno == ERANGE && (number == LONG_MAX || number == LONG_MIN)) return ReadDouble(token, error);
  if (number < INT_MIN || number > INT_MAX) return Fail(error);
  return Value(static_cast<int>(number));
}

/// The character is added to the token unless it is whitespace. Returns false on an error.
bool AddToToken(char c, std::string& token, bool& digit, bool& point, bool& exponent, DepthStack& depth) {
  if (c == '.') {
    if (!digit) return false;
    point = true;
  } else if (c == 'e' || c == 'E') {
    if (!EqualsAnyCase(token, "fals") && !EqualsAnyCase(token, "tru")) {
      if (!digit || exponent) return false;
      exponent = true;
    }
  } else if (c == ']' || c == '}') {
    if (depth.empty() || depth.top() != (c == ']' ? kInArray : kInObject)) return false;
    depth.pop();
  } else if (c == '[' || c == '{') {
    return false;
  } else if (IsSpace(c)) {
    return true;
  } else if (c >= '0' && c <= '9') {
    digit = true;
  }
  token += c;
  return true;
}

Value DeserializeLiteral(std::string& text, bool* error, DepthStack& depth) {
  std::string token;
  bool digit = false, point = false, exponent = false;
  size_t i = 0;
  for (; i < text.size() && text[i] != ','; ++i) {
    if (!AddToToken(text[i], token, digit, point, exponent, depth)) return Fail(error);
  }
  text = text.substr(i);
  return Classify(token, point, exponent, error);
}

Value DeserializeValue(std::string& text, bool* error, DepthStack& depth) {
  *error = false;
  text = Trim(text);
  if (text.empty()) return Value();
  if (text[0] == '[' || text[0] == '{') {
    const bool array = text[0] == '[';
    depth.push(array ? kInArray : kInObject);
    const size_t end = GetEndOfArrayOrObj(text, depth);
    if (end == std::string::npos) return Fail(error);
    std::string nested = text.substr(0, end + 1);
    Value value = array ? DeserializeArray(nested, depth) : DeserializeObj(nested, depth);
    text = text.substr(end + 1);
    return value;
  }
  if (text[0] == '"') {
    const size_t end = GetQuotePos(text, 1);
    if (end == std::string::npos) return Fail(error);
    Value value(UnescapeJSONString(text.substr(1, end - 1)));
    text = text.substr(end + 1);
    return value;
  }
  return DeserializeLiteral(text, error, depth);
}

Value DeserializeArray(std::string& text, DepthStack& depth) {
  text = Trim(text);
  if (text.empty() || text.front() != '[' || text.back() != ']') return Value();
  std::string rest = text.substr(1, text.size() - 2);
  json::Array array;
  while (!rest.empty()) {
    std::string token;
    bool error = false;
    for (size_t i = 0; i < rest.size(); ++i) {
      const char c = rest[i];
      if (c == '{' || c == '[') {
        Value value = DeserializeValue(rest, &error, depth);
        if (error) return Value();
        if (value.GetType() != json::NullVal) array.push_back(value);
        break;
      }
      const bool completes = c == ',' || c == ']';
      if (!completes) token += c;
      if (completes || i + 1 == rest.size()) {
        Value value = DeserializeValue(token, &error, depth);
        if (error) return Value();
        if (value.GetType() != json::NullVal) array.push_back(value);
        rest = rest.substr(i + 1);
        break;
      }
    }
  }
  return Value(array);
}

Value DeserializeObj(std::string text, DepthStack& depth) {
  text = Trim(text);
  if (text.empty() || (text.front() != '{' && text.back() != '}')) return Value();
  std::string rest = text.substr(1, text.size() - 2);
  json::Object object;
  while (!rest.empty()) {
    const size_t first = GetQuotePos(rest, 0);
    if (first == std::string::npos) return Value();
    const size_t second = GetQuotePos(rest, first + 1);
    if (second == std::string::npos) return Value();
    const size_t colon = rest.find(':', second);
    if (colon == std::string::npos) return Value();
    const std::string key = rest.substr(first + 1, second - first - 1);
    if (key.empty()) return Value();
    rest = rest.substr(colon + 1);
    bool error = false;
    const Value value = DeserializeValue(rest, &error, depth);
    object[key] = value;
    if (error) return Value();
  }
  return Value(object);
}

}  // namespace

json::Value Deserialize(const std::string& original) {
  DepthStack depth;
  std::string text = Trim(original);
  if (text.empty()) return Value();
  const bool object = text.front() == '{' && text.back() == '}';
  const bool array = text.front() == '[' && text.back() == ']';
  if (!object && !array) return Value();
  depth.push(object ? kInObject : kInArray);
  Value value = object ? DeserializeObj(text, depth) : DeserializeArray(text, depth);
  if (value.GetType() != json::NullVal && !depth.empty() && depth.top() == (object ? kInObject : kInArray)) depth.pop();
  return value;
}

}  // namespace json_reference
