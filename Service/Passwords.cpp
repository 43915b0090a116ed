#include "Passwords.h"

#include <openssl/evp.h>

#include <cstdint>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "Secrets.h"

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

std::vector<std::string> Split(const std::string& text) {
  std::vector<std::string> pieces;
  std::istringstream in(text);
  for (std::string piece; std::getline(in, piece, '$');) pieces.push_back(piece);
  return pieces;
}

}  // namespace

std::string HashPassword(const std::string& password) {
  const std::string salt = RandomHex(kSaltBytes);
  const std::string hash = Scrypt(password, salt, kCost);
  if (hash.empty()) throw std::runtime_error("the password could not be hashed");
  return "scrypt$" + std::to_string(kCost.n) + "$" + std::to_string(kCost.r) + "$" + std::to_string(kCost.p) + "$" +
         salt + "$" + hash;
}

bool VerifyPassword(const std::string& password, const std::string& hash) {
  const std::vector<std::string> pieces = Split(hash);
  if (pieces.size() != 6 || pieces[0] != "scrypt") return false;
  Cost cost{};
  try {
    cost = {std::stoull(pieces[1]), std::stoull(pieces[2]), std::stoull(pieces[3])};
  } catch (const std::logic_error&) {
    return false;
  }
  const std::string computed = Scrypt(password, pieces[4], cost);
  return !computed.empty() && SameSecret(computed, pieces[5]);
}

}  // namespace orvane_service
