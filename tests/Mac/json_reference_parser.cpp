#include "json_reference_parser.h"

#include <algorithm>

namespace json_reference {

namespace {

using json::Value;

std::string Trim(std::string text) {
  const char* const spaces = " \t\n\v\f\r";
  text.erase(0, text.find_first_not_of(spaces));
  return text.substr(0, text.find_last_not_of(spaces) + 1);
}

size_t GetQuotePos(const std::string& text, size_t start) {
  bool escape = false;
  for (size_t i = start; i < text.size(); ++i) {
    if (text[i] == '"' && !escape) return i;
    escape = text[i] == '\\' && !escape;
  }
  return std::string::npos;
}

/// The place of the counterpart of the first bracket, npos when one of the wrong kind comes first, or the text's
/// length.
size_t GetEndOfArrayOrObj(const std::string& text) {
  std::string open;
  bool inString = false;
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '"') {
      if (text[i - 1] != '\\') inString = !inString;
    } else if (!inString && (c == '[' || c == '{')) {
      open += c;
    } else if (!inString && (c == ']' || c == '}')) {
      if (open.back() != (c == ']' ? '[' : '{')) return std::string::npos;
      open.pop_back();
      if (open.empty()) return i;
    }
  }
  return text.size();
}

Value Fail(bool* error) {
  *error = true;
  return Value();
}

/// Strings, numbers and words are read by the real parser: here it is all about what stands around them.
Value DeserializeLeaf(const std::string& text, bool* error) {
  const Value alone = json::Deserialize("{\"leaf\":" + text + ",\"next\":0}");
  return alone.GetType() == json::ObjectVal ? alone["leaf"] : Fail(error);
}

/// Reads the value at the beginning of the text and cuts it off.
Value DeserializeValue(std::string& text, bool* error) {
  text = Trim(text);
  if (text.empty()) return Value();
  std::string value;
  if (text[0] == '[' || text[0] == '{') {
    const size_t end = GetEndOfArrayOrObj(text);
    if (end == std::string::npos) return Fail(error);
    value = text.substr(0, end + 1);
    text = text.substr(end + 1);
    return Deserialize(value);
  }
  const bool string = text[0] == '"';
  const size_t end = string ? GetQuotePos(text, 1) : std::min(text.find(','), text.size());
  if (end == std::string::npos) return Fail(error);
  value = text.substr(0, string ? end + 1 : end);
  text = text.substr(value.size());
  return DeserializeLeaf(value, error);
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
    if (first == std::string::npos) return Value();
    const size_t second = GetQuotePos(rest, first + 1);
    if (second == std::string::npos || second == first + 1) return Value();
    const size_t colon = rest.find(':', second);
    if (colon == std::string::npos) return Value();
    const std::string key = rest.substr(first + 1, second - first - 1);
    rest = rest.substr(colon + 1);
    object[key] = DeserializeValue(rest, &error);
    if (error) return Value();
  }
  return Value(object);
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

}  // namespace json_reference
