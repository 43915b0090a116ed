// Random values, digests, comparisons of secrets, and how passwords are kept: as salted scrypt hashes, each with its
// own parameters so that these can be changed.
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

/// Hashes a password with a fresh salt. The result is text: "scrypt$N$r$p$<salt>$<hash>", both in hexadecimal.
/// Takes 70 milliseconds and 16 MiB. Throws std::runtime_error when the hashing fails.
std::string HashPassword(const std::string& password);

/// True if the hash, as HashPassword() made it, is of this password. False for a hash that is not well-formed.
bool VerifyPassword(const std::string& password, const std::string& hash);

}  // namespace orvane_service
