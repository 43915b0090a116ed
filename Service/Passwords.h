// How passwords are kept: salted scrypt hashes, each with its own parameters so that these can be raised later.
#pragma once

#include <string>

namespace orvane_service {

/// Hashes a password with a fresh salt. The result is text: "scrypt$N$r$p$<salt>$<hash>", both in hexadecimal.
/// Takes 70 milliseconds and 16 MiB. Throws std::runtime_error when the hashing fails.
std::string HashPassword(const std::string& password);

/// True if the hash, as HashPassword() made it, is of this password. False for a hash that is not well-formed.
bool VerifyPassword(const std::string& password, const std::string& hash);

}  // namespace orvane_service
