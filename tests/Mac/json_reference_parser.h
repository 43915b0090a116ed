// A second parser for the same language, as plain as it can be: it copies and cuts strings at every step and calls
// itself for every level. It shares nothing with the real one, which has to agree with it on every text.
#pragma once

#include <string>

#include "json.h"

namespace json_reference {

/// As json::Deserialize(), in time that grows with the square of the text and with stack that grows with its depth.
json::Value Deserialize(const std::string& text);

/// Whether json::Deserialize() does the same with the text: throws, or gives the same value with the same types.
bool RealParserAgrees(const std::string& text);

}  // namespace json_reference
