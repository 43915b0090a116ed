// The host's texts: UTF-16 in buffers of a fixed size.
#pragma once

#include <optional>
#include <string>

#include "PrSDKTypes.h"

namespace orvane_host {

/// The UTF-8 text of a buffer of at most `units` units. Nothing when no zero unit ends the text within the buffer or
/// when it is not well-formed UTF-16 (a lone surrogate). Reads no unit behind the first zero.
std::optional<std::string> ReadUtf16(const prUTF16Char* text, size_t units);

}  // namespace orvane_host
