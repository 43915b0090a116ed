#include "HttpsClient.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <thread>

nlohmann::json Reply::Root() const {
  const nlohmann::json answer = nlohmann::json::parse(body, nullptr, false);
  if (answer.is_object() && answer.contains("root")) return answer["root"];
  ADD_FAILURE() << "no answer of the API: " << status << ", " << body;
  return {{"status", ""}, {"message", ""}, {"payload", nlohmann::json::array()}};
}

Reply HttpsClient::Send(
    const std::string& url,
    const std::function<httplib::Result(httplib::SSLClient& client, const std::string& path)>& send) const {
  const size_t begin = std::strlen("https://");
  const size_t colon = url.find(':', begin);
  const std::string host = url.substr(begin, colon - begin);
  httplib::SSLClient client(host, std::stoi(url.substr(colon + 1)));
  client.set_hostname_addr_map({{host, "127.0.0.1"}});
  client.set_ca_cert_path(authority_.c_str());
  client.set_read_timeout(std::chrono::seconds(60));
  client.set_url_encode(false);
  Reply reply;
  const httplib::Result result = send(client, url.substr(url.find('/', colon)));
  if (result) static_cast<httplib::Response&>(reply) = *result;
  return reply;
}

Reply HttpsClient::Get(const std::string& url, const httplib::Headers& headers) const {
  return Send(url, [&](httplib::SSLClient& client, const std::string& path) { return client.Get(path, headers); });
}

Reply HttpsClient::Post(const std::string& url, const std::string& body) const {
  return Send(url, [&](httplib::SSLClient& client, const std::string& path) {
    return client.Post(path, body, "application/x-www-form-urlencoded");
  });
}

Reply HttpsClient::PostForm(const std::string& url, const Parts& parts) const {
  return Send(url, [&](httplib::SSLClient& client, const std::string& path) { return client.Post(path, parts); });
}

RawConnection::RawConnection(const std::string& origin, const std::filesystem::path& authority)
    : curl_(curl_easy_init()) {
  curl_easy_setopt(curl_, CURLOPT_URL, origin.c_str());
  curl_easy_setopt(curl_, CURLOPT_CAINFO, authority.c_str());
  curl_easy_setopt(curl_, CURLOPT_CONNECT_ONLY, 1L);
  EXPECT_EQ(curl_easy_perform(curl_), CURLE_OK);
}

RawConnection::~RawConnection() {
  curl_easy_cleanup(curl_);
}

void RawConnection::Send(std::string_view data) {
  while (!data.empty()) {
    size_t sent = 0;
    const CURLcode result = curl_easy_send(curl_, data.data(), data.size(), &sent);
    if (result == CURLE_AGAIN) continue;
    ASSERT_EQ(result, CURLE_OK) << curl_easy_strerror(result);
    data.remove_prefix(sent);
  }
}

bool RawConnection::TrySend(std::string_view data) {
  size_t count = 0;
  char answer[4096];
  CURLcode received = CURLE_OK;
  while (received == CURLE_OK && (received = curl_easy_recv(curl_, answer, sizeof(answer), &count)) == CURLE_OK) {
    if (count == 0) return false;
  }
  const CURLcode sent = curl_easy_send(curl_, data.data(), data.size(), &count);
  return received == CURLE_AGAIN && (sent == CURLE_OK || sent == CURLE_AGAIN);
}

std::string RawConnection::ReadToEnd() {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  std::string text;
  while (std::chrono::steady_clock::now() < deadline) {
    char buffer[4096];
    size_t count = 0;
    const CURLcode result = curl_easy_recv(curl_, buffer, sizeof(buffer), &count);
    if (result == CURLE_AGAIN) {
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    } else if (result != CURLE_OK || count == 0) {
      break;
    }
    text.append(buffer, count);
  }
  return text;
}
