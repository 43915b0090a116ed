// Who is logged in. A login takes two steps: a key for the customer first, then, with the user's password, a token that
// is good only together with that key.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "Catalog.h"
#include "Database.h"

namespace orvane_service {

/// Returns the time in seconds since 1970, UTC.
using Clock = std::function<int64_t()>;

/// How long a key waits for the password, in seconds.
constexpr int64_t kKeyLifetime = 60 * 60;
/// How long a token is good, in seconds. A client logs in once and then renders and uploads, which can take many hours.
constexpr int64_t kTokenLifetime = 48 * 60 * 60;

/// Sessions live in the database, so they outlast a restart; it holds only hashes of keys and tokens. May be used by
/// any thread. Everything throws DatabaseError.
class Sessions {
 public:
  Sessions(Database& database, Clock clock) : database_(database), clock_(std::move(clock)) {}

  /// First step: a new key for the customer.
  std::string Open(int64_t customer);

  /// True if the key was given to this customer and has not expired.
  bool IsOpen(int64_t customer, const std::string& key);

  /// Second step, after the password was checked: a new token for the key, which replaces an earlier one. Nothing if
  /// the key is not the customer's or has expired.
  std::optional<std::string> LogIn(int64_t customer, int64_t user, const std::string& key);

  /// True if a user of the customer is logged in.
  bool IsAnyoneLoggedIn(int64_t customer);

  /// The user who is logged in with this key and this token, if they belong together and have not expired.
  std::optional<int64_t> FindUser(int64_t customer, const std::string& key, const std::string& token);

 private:
  Database& database_;
  Clock clock_;
};

}  // namespace orvane_service
