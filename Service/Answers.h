// The JSON answers of the API. Every answer is an object with the one member "root", which holds at least "status".
#pragma once

#include <nlohmann/json.hpp>

#include <string>

#include "HttpsServer.h"

namespace orvane_service {

/// A request that the service does not carry out.
struct Refusal {
  /// HTTP status, 400 or more.
  int status = 0;
  /// For the user, UTF-8. Without commas and quotes: the parsers of some clients trip over them.
  std::string message;
};

/// What a client is told whose key and token are not, or no longer, good.
constexpr const char* kSessionExpired = "Your session has expired. Please log in again.";

/// {"root": {"status": "success", ...the members}}
Response SuccessAnswer(nlohmann::json members);

/// {"root": {"status": "error", "message": ..., "payload": []}} with the HTTP status. A client that looks for a list
/// finds an empty one.
Response RefusalAnswer(const Refusal& refusal);

}  // namespace orvane_service
