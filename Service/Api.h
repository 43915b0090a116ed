// The calls of the project API that a client makes before it uploads: login and lists.
#pragma once

#include <array>
#include <atomic>
#include <map>
#include <mutex>
#include <string>

#include "Catalog.h"
#include "HttpsServer.h"
#include "Sessions.h"

namespace orvane_service {

/// One function for each call. All answer in JSON, throw Refusal for what they refuse, and may run on any thread. The
/// body is a form-encoded one.
class Api {
 public:
  Api(Catalog& catalog, Sessions& sessions) : catalog_(catalog), sessions_(sessions) {}

  /// First step of the login: the version of the API and a key.
  Response OpenSession(const Request& request);

  /// Second step: "auth_key", "username" and "password" of the body for a token. Waits while other passwords are
  /// checked.
  Response LogIn(const Request& request, const std::string& body);

  /// The customer's projects, for "auth_key" and "auth_token" of the body.
  Response ListProjects(const Request& request, const std::string& body);

  /// The folders of the project: those at the top level, or with "folder_id" in the body, those directly inside that
  /// folder.
  Response ListFolders(const Request& request, const std::string& body, const std::string& project);

  /// From now on nobody waits.
  void Stop() { stopped_ = true; }

 private:
  void RequireSession(std::map<std::string, std::string> fields, const Customer& customer);

  Catalog& catalog_;
  Sessions& sessions_;
  // A check of a password takes memory and a processor for itself: two at a time.
  std::array<std::mutex, 2> checking_;
  std::atomic<unsigned int> turn_{0};
  std::atomic<bool> stopped_{false};
};

/// The fields of form-encoded text: name to value, the last of a name. "+" is a space, "%" with two hexadecimal digits
/// a byte; everything else stands for itself, so that a client may send plain UTF-8. A field ends at "&" and its name
/// at the first "=": a value may hold further ones. Stops at a field without any.
std::map<std::string, std::string> ParseFields(const std::string& body);

}  // namespace orvane_service
