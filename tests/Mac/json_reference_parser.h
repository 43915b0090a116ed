// A second parser for the same language, as plain as it can be: it copies and cuts strings at every step. The real one
// has to agree with it on every text. Single strings, numbers and words it leaves to the real one.
#pragma once

#include "json.h"

#include <string>

namespace json_reference {

/// As json::Deserialize(), in time that grows with the square of the text and with stack that grows with its depth.
json::Value Deserialize(const std::string& text);

}  // namespace json_reference
