#include "Sessions.h"

#include "Secrets.h"

namespace orvane_service {

std::string Sessions::Open(int64_t customer) {
  const std::string key = RandomHex(kIdentifierBytes);
  const int64_t now = clock_();
  Transaction transaction(database_);
  Statement(database_, "DELETE FROM sessions WHERE expires_at <= ?").Bind(now).Run();
  Statement insert(database_,
                   "INSERT INTO sessions (key_hash, customer_id, token_hash, expires_at) VALUES (?, ?, '', ?)");
  insert.Bind(Sha256Hex(key)).Bind(customer).Bind(now + kKeyLifetime).Run();
  Statement(database_,
            "DELETE FROM sessions WHERE rowid IN (SELECT rowid FROM sessions WHERE customer_id = ? AND user_id IS NULL"
            " ORDER BY rowid DESC LIMIT -1 OFFSET ?)")
      .Bind(customer)
      .Bind(kMaxWaitingKeys)
      .Run();
  transaction.Commit();
  return key;
}

bool Sessions::IsOpen(int64_t customer, const std::string& key) {
  Statement query(database_, "SELECT 1 FROM sessions WHERE key_hash = ? AND customer_id = ? AND expires_at > ?");
  return query.Bind(Sha256Hex(key)).Bind(customer).Bind(clock_()).Step();
}

std::optional<std::string> Sessions::LogIn(int64_t customer, int64_t user, const std::string& key) {
  const std::string token = RandomHex(kIdentifierBytes);
  const int64_t now = clock_();
  Statement update(database_,
                   "UPDATE sessions SET user_id = ?, token_hash = ?, expires_at = ?"
                   " WHERE key_hash = ? AND customer_id = ? AND expires_at > ?");
  update.Bind(user).Bind(Sha256Hex(token)).Bind(now + kTokenLifetime);
  update.Bind(Sha256Hex(key)).Bind(customer).Bind(now).Run();
  if (update.Changes() == 0) return std::nullopt;
  return token;
}

bool Sessions::IsAnyoneLoggedIn(int64_t customer) {
  Statement query(database_,
                  "SELECT 1 FROM sessions WHERE customer_id = ? AND user_id IS NOT NULL AND expires_at > ? LIMIT 1");
  return query.Bind(customer).Bind(clock_()).Step();
}

std::optional<int64_t> Sessions::FindUser(int64_t customer, const std::string& key, const std::string& token) {
  Statement query(database_,
                  "SELECT user_id, token_hash FROM sessions WHERE key_hash = ? AND customer_id = ? AND expires_at > ?");
  if (!query.Bind(Sha256Hex(key)).Bind(customer).Bind(clock_()).Step()) return std::nullopt;
  if (!SameSecret(query.Text(1), Sha256Hex(token))) return std::nullopt;
  return query.Integer(0);
}

}  // namespace orvane_service
