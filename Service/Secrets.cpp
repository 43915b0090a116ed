#include "Secrets.h"

#include <openssl/crypto.h>
#include <openssl/rand.h>
#include <openssl/sha.h>

#include <algorithm>
#include <stdexcept>

namespace orvane_service {

std::string Hex(std::string_view bytes) {
  static const char digits[] = "0123456789abcdef";
  std::string text;
  text.reserve(bytes.size() * 2);
  for (unsigned char byte : bytes) {
    text += digits[byte >> 4];
    text += digits[byte & 15];
  }
  return text;
}

std::string RandomHex(size_t bytes) {
  std::string random(bytes, '\0');
  if (RAND_bytes(reinterpret_cast<unsigned char*>(random.data()), static_cast<int>(bytes)) != 1) {
    throw std::runtime_error("the system's random generator failed");
  }
  return Hex(random);
}

std::string Sha256Hex(std::string_view text) {
  unsigned char digest[SHA256_DIGEST_LENGTH];
  SHA256(reinterpret_cast<const unsigned char*>(text.data()), text.size(), digest);
  return Hex({reinterpret_cast<const char*>(digest), sizeof(digest)});
}

bool SameSecret(std::string_view a, std::string_view b) {
  return a.size() == b.size() && CRYPTO_memcmp(a.data(), b.data(), a.size()) == 0;
}

bool IsIdentifier(std::string_view text) {
  return text.size() == kIdentifierBytes * 2 &&
         std::all_of(text.begin(), text.end(), [](char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); });
}

}  // namespace orvane_service
