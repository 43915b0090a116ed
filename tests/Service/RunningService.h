// The base of tests that talk to a service: one in this process, on a free port, in a temporary folder.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "HttpsClient.h"
#include "Service.h"
#include "TemporaryFolder.h"

/// Waits until the condition holds. Returns false at a deadline of some seconds.
bool Eventually(const std::function<bool()>& condition);

/// Names of the entries of a folder, sorted.
std::vector<std::string> Entries(const std::filesystem::path& folder);

/// What a login gave.
struct Login {
  std::string key;
  std::string token;

  /// The credentials as a form's body.
  std::string Body() const { return "auth_token=" + token + "&auth_key=" + key; }
};

class RunningService : public testing::Test {
 protected:
  static constexpr const char* kPassword = "let-me-in";

  RunningService() { Restart(); }

  /// Ends the service if it runs, and starts one on the same data with the options as they now are.
  void Restart();

  /// Address of a path under a customer, or under "www".
  std::string Url(const std::string& subdomain, const std::string& path) const;

  /// Logs the demo user in. Fails the test if that does not work.
  Login LogIn(const std::string& subdomain = "acme") const;

  /// The id of the first project of acme, and of a folder in it.
  static constexpr const char* kProject = "1";
  static constexpr const char* kFolder = "1";

  std::string UploadUrl(const std::string& project = kProject) const {
    return Url("acme", "/api/prjacc/upload_file/" + project);
  }

  /// The parts of a good upload, in the plug-in's order: the file first.
  Parts UploadParts(const Login& login, const std::string& content = "content") const;

  /// Fails the test if the reply is not a refusal with this status, or if anything was stored.
  void ExpectRefused(const Reply& reply, int status) const;

  /// Fails the test if there is a file, complete or not, or a record of one.
  void ExpectNothingStored() const;

  TemporaryFolder folder_;
  /// Read by the service, so that time can be made to pass.
  std::atomic<int64_t> now_{orvane_service::SystemTime()};
  orvane_service::ServiceOptions options_;
  std::filesystem::path data_ = folder_.Path() / "data";
  HttpsClient client_{data_ / "ca" / "ca.pem"};
  std::unique_ptr<orvane_service::Service> service_;
};
