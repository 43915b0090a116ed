#include "Sessions.h"

#include "Secrets.h"

namespace orvane_service {

std::string Sessions::Open(int64_t customer) {
  const std::string key = RandomHex(kIdentifierBytes);
  const int64_t now = clock_();
  Transaction transaction(database_);
  Statement(database_, "DELETE FROM sessions WHERE expires_at <= ?", now).exec();
  Statement(database_, "INSERT INTO sessions (key_hash, customer_id, token_hash, expires_at) VALUES (?, ?, '', ?)",
            Sha256Hex(key), customer, now + kKeyLifetime)
      .exec();
  transaction.commit();
  return key;
}

bool Sessions::IsOpen(int64_t customer, const std::string& key) {
  return Statement(database_, "SELECT 1 FROM sessions WHERE key_hash = ? AND customer_id = ? AND expires_at > ?",
                   Sha256Hex(key), customer, clock_())
      .executeStep();
}

std::optional<std::string> Sessions::LogIn(int64_t customer, int64_t user, const std::string& key) {
  const std::string token = RandomHex(kIdentifierBytes);
  const int64_t now = clock_();
  const int changes = Statement(database_,
                                "UPDATE sessions SET user_id = ?, token_hash = ?, expires_at = ?"
                                " WHERE key_hash = ? AND customer_id = ? AND expires_at > ?",
                                user, Sha256Hex(token), now + kTokenLifetime, Sha256Hex(key), customer, now)
                          .exec();
  if (changes == 0) return std::nullopt;
  return token;
}

bool Sessions::IsAnyoneLoggedIn(int64_t customer) {
  return Statement(database_,
                   "SELECT 1 FROM sessions WHERE customer_id = ? AND user_id IS NOT NULL AND expires_at > ? LIMIT 1",
                   customer, clock_())
      .executeStep();
}

std::optional<int64_t> Sessions::FindUser(int64_t customer, const std::string& key, const std::string& token) {
  Statement query(database_,
                  "SELECT user_id, token_hash FROM sessions WHERE key_hash = ? AND customer_id = ? AND expires_at > ?",
                  Sha256Hex(key), customer, clock_());
  if (!query.executeStep() || !SameSecret(query.Text(1), Sha256Hex(token))) return std::nullopt;
  return query.Integer(0);
}

}  // namespace orvane_service
