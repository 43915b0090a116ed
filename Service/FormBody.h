// The fields of a form-encoded request body.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace orvane_service {

/// Reads application/x-www-form-urlencoded text: field name to value, the first of a name. "+" is a space, "%" with two
/// hexadecimal digits a byte; everything else stands for itself, so that a client may send plain UTF-8. A field ends at
/// "&" and its name at the first "=": a value may hold further ones.
std::map<std::string, std::string> ParseFormBody(std::string_view body);

/// The value of a field, or the empty text.
std::string FieldOf(const std::map<std::string, std::string>& fields, const std::string& name);

}  // namespace orvane_service
