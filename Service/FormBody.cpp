#include "FormBody.h"

#include <algorithm>
#include <charconv>

namespace orvane_service {
namespace {

std::string Decode(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    unsigned char byte = 0;
    const char* digits = text.data() + i + 1;
    if (text[i] == '+') {
      decoded += ' ';
    } else if (text[i] == '%' && i + 2 < text.size() &&
               std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
      decoded += static_cast<char>(byte);
      i += 2;
    } else {
      decoded += text[i];
    }
  }
  return decoded;
}

}  // namespace

std::map<std::string, std::string> ParseFormBody(std::string_view body) {
  std::map<std::string, std::string> fields;
  while (!body.empty()) {
    const std::string_view field = body.substr(0, body.find('&'));
    body.remove_prefix(std::min(body.size(), field.size() + 1));
    const size_t equals = field.find('=');
    const std::string_view value = equals == field.npos ? std::string_view() : field.substr(equals + 1);
    if (!field.empty()) fields.emplace(Decode(field.substr(0, equals)), Decode(value));
  }
  return fields;
}

std::string FieldOf(const std::map<std::string, std::string>& fields, const std::string& name) {
  const auto field = fields.find(name);
  return field == fields.end() ? std::string() : field->second;
}

}  // namespace orvane_service
