#include "RunningService.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace fs = std::filesystem;

bool Eventually(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

std::vector<std::string> Entries(const fs::path& folder) {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename());
  std::sort(names.begin(), names.end());
  return names;
}

void RunningService::Restart() {
  service_.reset();
  options_.data = data_;
  options_.port = 0;
  options_.demo_password = kPassword;
  options_.clock = [this] { return now_.load(); };
  service_ = std::make_unique<orvane_service::Service>(options_);
  service_->Start();
}

std::string RunningService::Url(const std::string& subdomain, const std::string& path) const {
  return "https://" + subdomain + ".orvane.localhost:" + std::to_string(service_->Port()) + path;
}

Login RunningService::LogIn(const std::string& subdomain) const {
  const std::string url = Url(subdomain, "/api/prjacc/prjacc");
  Login login;
  login.key = client_.Get(url).Root().value("auth_key", "");
  const std::string body = "auth_key=" + login.key + "&username=editor&password=" + kPassword;
  const nlohmann::json root = client_.Post(url, body).Root();
  EXPECT_EQ(root["status"], "success") << root;
  if (root["payload"].is_object()) login.token = root["payload"].value("token", "");
  return login;
}

Parts RunningService::UploadParts(const Login& login, const std::string& content) const {
  return {{"Filedata", content, "film.mp4"},
          {"auth_token", login.token, ""},
          {"auth_key", login.key, ""},
          {"folder_id", kFolder, ""},
          {"title", "A title", ""}};
}

void RunningService::ExpectNothingStored() const {
  EXPECT_TRUE(Eventually([&] { return Entries(data_ / "incoming").empty(); })) << "a temporary file is left";
  EXPECT_TRUE(Entries(data_ / "files").empty());
  orvane_service::Database database(data_ / "orvane.db");
  EXPECT_FALSE(orvane_service::Statement(database, "SELECT 1 FROM files").executeStep());
}

void RunningService::ExpectRefused(const Reply& reply, int status) const {
  EXPECT_EQ(reply.status, status);
  const nlohmann::json root = reply.Root();
  EXPECT_EQ(root.value("status", ""), "error") << root;
  EXPECT_NE(root.value("message", ""), "") << root;
  EXPECT_EQ(root.value("payload", nlohmann::json()), nlohmann::json::array()) << root;
  ExpectNothingStored();
}
