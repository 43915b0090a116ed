#include <cstdio>
#include <cstring>

#include "json.h"

namespace json {

namespace {

// Six digits after the point. Infinity and NaN have no JSON text; they come out as the C library writes them.
std::string FormatDouble(double number) {
  // The largest double has 309 digits before the point.
  char text[500];
  const int length = std::snprintf(text, sizeof text, "%f", number);
  const size_t sign = text[0] == '-' ? 1 : 0;
  const size_t digits = std::strspn(text + sign, "0123456789");
  if (digits == 0) return text;
  // Between the digits stands the decimal point of the process's locale, which may be more than one byte.
  return std::string(text, sign + digits) + "." + std::string(text + length - 6, 6);
}

std::string Quoted(const std::string& text) {
  return "\"" + text + "\"";
}

}  // namespace

class Writer {
 public:
  static std::string SerializeValue(const Value& value) {
    switch (value.mValueType) {
      case StringVal:
        return Quoted(value.mStringVal);
      case IntVal:
        return std::to_string(value.mIntVal);
      case FloatVal:
        return FormatDouble(value.mFloatVal);
      case DoubleVal:
        return FormatDouble(value.mDoubleVal);
      case ObjectVal:
        return SerializeObject(value.mObjectVal);
      case ArrayVal:
        return SerializeArray(value.mArrayVal);
      case BoolVal:
        return value.mBoolVal ? "true" : "false";
      default:
        return "null";
    }
  }

 private:
  static std::string SerializeObject(const Object& object) {
    std::string text;
    for (const auto& [key, value] : object) {
      text += (text.empty() ? "" : ",") + Quoted(key) + ":" + SerializeValue(value);
    }
    return "{" + text + "}";
  }

  static std::string SerializeArray(const Array& array) {
    std::string text;
    for (size_t i = 0; i < array.size(); ++i) text += (i == 0 ? "" : ",") + SerializeValue(array[i]);
    return "[" + text + "]";
  }
};

std::string Serialize(const Value& value) {
  const bool isTree = value.GetType() == ObjectVal || value.GetType() == ArrayVal;
  return isTree ? Writer::SerializeValue(value) : std::string();
}

}  // namespace json
