// Random values, digests and comparisons of secrets.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvane_service {

/// Length of every random identifier of the service: 128 bits cannot be guessed.
constexpr size_t kIdentifierBytes = 16;

/// Returns the given number of bytes from the system's secure generator as lower-case hexadecimal digits, two for each
/// byte. Throws std::runtime_error when the generator fails.
std::string RandomHex(size_t bytes);

/// Bytes as lower-case hexadecimal digits, two for each byte.
std::string Hex(std::string_view bytes);

/// SHA-256 of the text, as 64 lower-case hexadecimal digits.
std::string Sha256Hex(std::string_view text);

/// True if both are equal. The time taken tells nothing but whether the lengths differ.
bool SameSecret(std::string_view a, std::string_view b);

/// True if the text is what RandomHex(kIdentifierBytes) returns. Whatever passes is safe as a file name.
bool IsIdentifier(std::string_view text);

}  // namespace orvane_service
