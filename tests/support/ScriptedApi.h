// A service on a test server that answers the plug-in's requests as a test sets them.
#pragma once

#include <string>
#include <vector>

#include "ScriptedServer.h"
#include "TransferRedirect.h"

namespace window_test {

/// While it lives, the process's transfers come here. The customer is "acme", the user "editor" with the password
/// "secret"; there are two projects, and folders three levels deep in the first. Answers may be changed at any time.
class ScriptedApi {
 public:
  ScriptedApi();

  orvane_test::ScriptedServer& Server() { return server_; }

  /// Answers a target ("/api/prjacc/get_project_list") from now on.
  void Answer(const std::string& target, const std::string& body) {
    server_.Route(target, orvane_test::TextResponse(body));
  }

  /// The requests for a target.
  std::vector<orvane_test::Request> RequestsFor(const std::string& target) const;

  static constexpr const char* kStep = "/api/prjacc/prjacc";
  static constexpr const char* kProjects = "/api/prjacc/get_project_list";
  static constexpr const char* kFolders = "/api/prjacc/get_folders/";
  static constexpr const char* kUpload = "/api/prjacc/upload_file/";
  static constexpr const char* kVersion = "/downloads/vorrel-premiere/version.txt";

  /// An answer of the service: a success with the payload's JSON text, and a refusal.
  static std::string Success(const std::string& payload);
  static std::string Refusal(const std::string& message);

 private:
  orvane_test::ScriptedServer server_;
  orvane_test::TransferRedirect redirect_;
};

}  // namespace window_test
