// The calls of the project API that a client makes before it uploads: login and lists.
#pragma once

#include <httplib.h>

#include <map>
#include <string>

#include "Catalog.h"
#include "PasswordGate.h"
#include "Sessions.h"

namespace orvane_service {

/// One function for each call. All answer in JSON, throw Refusal for what they refuse, and may run on any thread.
class Api {
 public:
  Api(Catalog& catalog, Sessions& sessions, PasswordGate& gate) : catalog_(catalog), sessions_(sessions), gate_(gate) {}

  /// First step of the login: the version of the API and a key.
  void OpenSession(const httplib::Request& request, httplib::Response& response);

  /// Second step: "auth_key", "username" and "password" of the form for a token.
  void LogIn(const httplib::Request& request, httplib::Response& response);

  /// The customer's projects, for "auth_key" and "auth_token" of the form.
  void ListProjects(const httplib::Request& request, httplib::Response& response);

  /// The folders of the project whose id is the first group of the matched path: those at the top level, or with
  /// "folder_id" in the form, those directly inside that folder.
  void ListFolders(const httplib::Request& request, httplib::Response& response);

 private:
  void RequireSession(const std::map<std::string, std::string>& fields, const Customer& customer);

  Catalog& catalog_;
  Sessions& sessions_;
  PasswordGate& gate_;
};

}  // namespace orvane_service
