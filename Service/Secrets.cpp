#include "Secrets.h"

#include <glib.h>
#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/rand.h>

#include <cinttypes>
#include <cstdio>
#include <stdexcept>

namespace orvane_service {
namespace {

struct Cost {
  uint64_t n;
  uint64_t r;
  uint64_t p;
};

// 128 * n * r bytes of memory: 16 MiB.
constexpr Cost kCost{1 << 14, 8, 1};
// A stored hash may ask for more than kCost, but not for all memory there is.
constexpr uint64_t kMemoryLimit = 256ull << 20;
constexpr size_t kSaltBytes = 16;
constexpr size_t kHashBytes = 32;

// Returns the hash in hexadecimal, or nothing when the parameters are refused.
std::string Scrypt(const std::string& password, const std::string& salt, const Cost& cost) {
  std::string key(kHashBytes, '\0');
  const int ok =
      EVP_PBE_scrypt(password.data(), password.size(), reinterpret_cast<const unsigned char*>(salt.data()), salt.size(),
                     cost.n, cost.r, cost.p, kMemoryLimit, reinterpret_cast<unsigned char*>(key.data()), key.size());
  return ok == 1 ? Hex(key) : std::string();
}

}  // namespace

std::string Hex(std::string_view bytes) {
  static const char digits[] = "0123456789abcdef";
  std::string text;
  for (unsigned char byte : bytes) {
    text += {digits[byte >> 4], digits[byte & 15]};
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
  g_autofree char* digest =
      g_compute_checksum_for_data(G_CHECKSUM_SHA256, reinterpret_cast<const guchar*>(text.data()), text.size());
  return digest;
}

bool SameSecret(std::string_view a, std::string_view b) {
  return a.size() == b.size() && CRYPTO_memcmp(a.data(), b.data(), a.size()) == 0;
}

std::string HashPassword(const std::string& password) {
  const std::string salt = RandomHex(kSaltBytes);
  const std::string hash = Scrypt(password, salt, kCost);
  if (hash.empty()) throw std::runtime_error("the password could not be hashed");
  return "scrypt$" + std::to_string(kCost.n) + "$" + std::to_string(kCost.r) + "$" + std::to_string(kCost.p) + "$" +
         salt + "$" + hash;
}

bool VerifyPassword(const std::string& password, const std::string& hash) {
  Cost cost{};
  char salt[65];
  char wanted[65];
  const int read = sscanf(hash.c_str(), "scrypt$%" SCNu64 "$%" SCNu64 "$%" SCNu64 "$%64[0-9a-f]$%64[0-9a-f]", &cost.n,
                          &cost.r, &cost.p, salt, wanted);
  if (read != 5) return false;
  const std::string computed = Scrypt(password, salt, cost);
  return !computed.empty() && SameSecret(computed, wanted);
}

}  // namespace orvane_service
