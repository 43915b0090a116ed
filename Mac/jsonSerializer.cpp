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

// Writes the text of a tree. The objects and arrays around the current place are kept on a stack of their own, since a
// tree may be deeper than the thread's stack.
class Writer {
 public:
  void SerializeValue(const Value& value) {
    switch (value.mValueType) {
      case StringVal:
        out_ += Quoted(value.mStringVal);
        break;
      case IntVal:
        out_ += std::to_string(value.mIntVal);
        break;
      case FloatVal:
        out_ += FormatDouble(value.mFloatVal);
        break;
      case DoubleVal:
        out_ += FormatDouble(value.mDoubleVal);
        break;
      case ObjectVal:
        out_ += '{';
        open_.push_back({&value.mObjectVal, value.mObjectVal.begin(), nullptr, 0});
        break;
      case ArrayVal:
        SerializeArray(value.mArrayVal);
        break;
      case BoolVal:
        out_ += value.mBoolVal ? "true" : "false";
        break;
      default:
        out_ += "null";
        break;
    }
  }

  void SerializeArray(const Array& array) {
    out_ += '[';
    open_.push_back({nullptr, {}, &array, 0});
  }

  std::string Finish() {
    while (!open_.empty()) {
      if (open_.back().object != nullptr) {
        AddMember(open_.back());
      } else {
        AddElement(open_.back());
      }
    }
    return std::move(out_);
  }

 private:
  // An object or an array whose closing bracket is still to come.
  struct Open {
    const Object* object;
    Object::const_iterator member;
    const Array* array;
    size_t index;
  };

  // Both of these may move the stack's elements when they add a value: that comes last.
  void AddMember(Open& open) {
    if (open.member == open.object->end()) return Close('}');
    if (open.member != open.object->begin()) out_ += ',';
    const auto& member = *open.member++;
    out_ += Quoted(member.first) + ":";
    SerializeValue(member.second);
  }

  void AddElement(Open& open) {
    if (open.index == open.array->size()) return Close(']');
    if (open.index != 0) out_ += ',';
    SerializeValue((*open.array)[open.index++]);
  }

  void Close(char bracket) {
    out_ += bracket;
    open_.pop_back();
  }

  std::string out_;
  std::vector<Open> open_;
};

std::string Serialize(const Value& value) {
  if (value.GetType() != ObjectVal && value.GetType() != ArrayVal) return std::string();
  Writer writer;
  writer.SerializeValue(value);
  return writer.Finish();
}

}  // namespace json
