// A strict view of a JSON value for tests: json's own equality is lopsided and calls 1 and 1.0 the same.
#pragma once

#include "json.h"

#include <string>

namespace json_reference {

/// A text that differs for two values unless they have the same types, structure and content throughout. A number's
/// int, float and double all count.
std::string Dump(const json::Value& value);

}  // namespace json_reference
