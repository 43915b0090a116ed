// The base of tests that talk to a service: one in this process, on a free port, in a temporary folder.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

#include "HttpsClient.h"
#include "Service.h"
#include "TemporaryFolder.h"

/// Waits until the condition holds. Returns false at a deadline of some seconds.
inline bool Eventually(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!condition() && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return condition();
}

/// What a login gave.
struct Login {
  std::string key;
  std::string token;

  std::string Body() const { return "auth_token=" + token + "&auth_key=" + key; }
};

class RunningService : public testing::Test {
 protected:
  RunningService() { Restart(); }

  /// Ends the service if it runs, and starts one on the same data with the options as they now are.
  void Restart() {
    service_.reset();
    options_.data = data_;
    options_.port = 0;
    options_.demo_password = kPassword;
    options_.clock = [this] { return now_.load(); };
    service_ = std::make_unique<orvane_service::Service>(options_);
    service_->Start();
  }

  std::string Url(const std::string& subdomain, const std::string& path) const {
    return "https://" + subdomain + ".orvane.localhost:" + std::to_string(service_->Port()) + path;
  }

  std::string UploadUrl(const std::string& project = "1") const {
    return Url("acme", "/api/prjacc/upload_file/" + project);
  }

  /// Logs the demo user in. Fails the test if that does not work.
  Login LogIn(const std::string& subdomain = "acme") const {
    const std::string url = Url(subdomain, "/api/prjacc/prjacc");
    const std::string key = client_.Get(url).Root().value("auth_key", "");
    const Reply reply = client_.Post(url, "auth_key=" + key + "&username=editor&password=" + kPassword);
    EXPECT_EQ(reply.status, 200) << reply.body;
    return {key, reply.Root()["payload"].value("token", "")};
  }

  /// The parts of a good upload, in the plug-in's order: the file first.
  static Parts UploadParts(const Login& login, const std::string& content = "content") {
    return {{"Filedata", content, "film.mp4"},
            {"auth_token", login.token, ""},
            {"auth_key", login.key, ""},
            {"folder_id", "1", ""},
            {"title", "A title", ""}};
  }

  bool NothingIsComing() const { return std::filesystem::is_empty(data_ / "incoming"); }

  /// Fails the test if there is a file, complete or not, or a record of one.
  void ExpectNothingStored() const {
    EXPECT_TRUE(Eventually([this] { return NothingIsComing(); })) << "a temporary file is left";
    EXPECT_TRUE(std::filesystem::is_empty(data_ / "files"));
    orvane_service::Database database(data_ / "orvane.db");
    EXPECT_FALSE(orvane_service::Statement(database, "SELECT 1 FROM files").executeStep());
  }

  /// Fails the test if the reply is not a refusal with this status, or if anything was stored.
  void ExpectRefused(const Reply& reply, int status) const {
    EXPECT_EQ(reply.status, status);
    nlohmann::json root = reply.Root();
    EXPECT_NE(root.value("message", ""), "") << root;
    root.erase("message");
    EXPECT_EQ(root, nlohmann::json({{"status", "error"}, {"payload", nlohmann::json::array()}}));
    ExpectNothingStored();
  }

  static constexpr const char* kPassword = "let-me-in";
  TemporaryFolder folder_;
  /// Read by the service, so that time can be made to pass.
  std::atomic<int64_t> now_{orvane_service::SystemTime()};
  orvane_service::ServiceOptions options_;
  std::filesystem::path data_ = folder_.Path() / "data";
  HttpsClient client_{data_ / "ca" / "ca.pem"};
  std::unique_ptr<orvane_service::Service> service_;
};
