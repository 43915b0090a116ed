// A client of the service for tests, which can send what no proper client sends. TLS is verified against the service's
// own authority.
#pragma once

#include <curl/curl.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <poll.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct Reply {
  /// 0 when there was no answer.
  int status;
  std::string head, body;

  /// The first header of that name, or the empty text.
  std::string Header(const std::string& name) const {
    const size_t begin = head.find("\r\n" + name + ": ");
    if (begin == head.npos) return "";
    const size_t value = begin + name.size() + 4;
    return head.substr(value, head.find("\r\n", value) - value);
  }

  /// The member "root" of the body; fails the test if the body is no such JSON.
  nlohmann::json Root() const {
    const nlohmann::json answer = nlohmann::json::parse(body, nullptr, false);
    EXPECT_TRUE(answer.is_object() && answer.contains("root")) << "no answer of the API: " << status << ", " << body;
    return answer.is_object() ? answer.value("root", nlohmann::json::object()) : nlohmann::json::object();
  }
};

/// A part of a form; one with a file name is a file.
struct Part {
  std::string name, content, file_name;
};
using Parts = std::vector<Part>;

/// The type of a form, the form without its end, and its end.
const std::string kFormType = "Content-Type: multipart/form-data; boundary=xyz\r\n";
inline std::string FormText(const Parts& parts) {
  std::string text;
  for (const Part& part : parts) {
    text += "--xyz\r\nContent-Disposition: form-data; name=\"" + part.name + "\"";
    text +=
        (part.file_name.empty() ? "" : "; filename=\"" + part.file_name + "\"") + "\r\n\r\n" + part.content + "\r\n";
  }
  return text;
}
const std::string kFormEnd = "--xyz--\r\n";

/// A connection, cut by the destructor: over TLS to "https://acme.orvane.localhost:1234", or bare with "http".
class Connection {
 public:
  explicit Connection(const std::string& origin, const std::filesystem::path& authority = {}) {
    curl_easy_setopt(curl_.get(), CURLOPT_URL, origin.c_str());
    if (!authority.empty()) curl_easy_setopt(curl_.get(), CURLOPT_CAINFO, authority.c_str());
    curl_easy_setopt(curl_.get(), CURLOPT_CONNECT_ONLY, 1L);
    EXPECT_EQ(curl_easy_perform(curl_.get()), CURLE_OK);
  }

  /// Sends everything. Returns false if the other side ends the connection before, or takes nothing until a deadline.
  bool Send(std::string_view data) {
    while (!data.empty()) {
      size_t sent = 0;
      const CURLcode result = curl_easy_send(curl_.get(), data.data(), data.size(), &sent);
      if (result != CURLE_OK && (result != CURLE_AGAIN || !Await(POLLOUT))) return false;
      data.remove_prefix(sent);
    }
    return true;
  }

  /// What has come when the other side ends the connection, or at a deadline.
  Reply ReadToEnd() {
    std::string text;
    for (bool ended = false; !ended;) {
      char buffer[4096];
      size_t count = 0;
      const CURLcode result = curl_easy_recv(curl_.get(), buffer, sizeof(buffer), &count);
      text.append(buffer, count);
      ended = result == CURLE_AGAIN ? !Await(POLLIN) : result != CURLE_OK || count == 0;
    }
    const size_t end = std::min(text.find("\r\n\r\n"), text.size());
    return {text.rfind("HTTP/1.1 ", 0) == 0 ? std::stoi(text.substr(9)) : 0, text.substr(0, end) + "\r\n",
            text.erase(0, end + 4)};
  }

 private:
  bool Await(short events) {
    constexpr int kMilliseconds = 20000;
    curl_socket_t socket = -1;
    curl_easy_getinfo(curl_.get(), CURLINFO_ACTIVESOCKET, &socket);
    pollfd entry{socket, events, 0};
    return poll(&entry, 1, kMilliseconds) > 0;
  }

  std::unique_ptr<CURL, void (*)(CURL*)> curl_{curl_easy_init(), curl_easy_cleanup};
};

/// An address names host, port and path: "https://acme.orvane.localhost:1234/". Headers end in line ends.
struct HttpsClient {
  /// Sends a request with the method, the host, and these headers and bytes.
  Connection Begin(const std::string& method, const std::string& url, const std::string& headers,
                   const std::string& body) const {
    const size_t path = url.find('/', 8);
    Connection connection(url.substr(0, path), authority);
    connection.Send(method + " " + url.substr(path) + " HTTP/1.1\r\nHost: " + url.substr(8, path - 8) +
                    "\r\nConnection: close\r\n" + headers + "\r\n" + body);
    return connection;
  }
  Reply Get(const std::string& url, const std::string& headers = "") const {
    return Begin("GET", url, headers, "").ReadToEnd();
  }
  Reply Post(const std::string& url, const std::string& body, const std::string& headers = "") const {
    return Begin("POST", url, headers + "Content-Length: " + std::to_string(body.size()) + "\r\n", body).ReadToEnd();
  }
  Reply PostForm(const std::string& url, const Parts& parts) const {
    return Post(url, FormText(parts) + kFormEnd, kFormType);
  }

  const std::filesystem::path authority;
};
