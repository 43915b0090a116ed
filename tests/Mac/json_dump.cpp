#include "json_dump.h"

#include <cstdio>

namespace json_reference {

namespace {

std::string DumpString(const std::string& text) {
  return std::to_string(text.size()) + ":" + text;
}

std::string DumpNumber(const json::Value& value) {
  char text[120];
  std::snprintf(text, sizeof text, "%d/%a/%a", value.ToInt(), static_cast<double>(value.ToFloat()), value.ToDouble());
  return text;
}

}  // namespace

std::string Dump(const json::Value& value) {
  switch (value.GetType()) {
    case json::NullVal:
      return "null";
    case json::StringVal:
      return "string " + DumpString(value.ToString());
    case json::IntVal:
      return "int " + DumpNumber(value);
    case json::FloatVal:
      return "float " + DumpNumber(value);
    case json::DoubleVal:
      return "double " + DumpNumber(value);
    case json::BoolVal:
      return value.ToBool() ? "true" : "false";
    case json::ObjectVal: {
      std::string text = "{";
      const json::Object object = value.ToObject();
      for (const auto& entry : object) text += DumpString(entry.first) + "=" + Dump(entry.second) + ";";
      return text + "}";
    }
    case json::ArrayVal: {
      std::string text = "[";
      const json::Array array = value.ToArray();
      for (const json::Value& element : array) text += Dump(element) + ";";
      return text + "]";
    }
  }
  return "unknown type " + std::to_string(value.GetType());
}

}  // namespace json_reference
