// Clients of the service for tests: TLS is verified against the service's own authority.
#pragma once

#include <curl/curl.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct Reply {
  /// -1 when there was no answer.
  long status = -1;
  std::string body;
  /// By their names in lower case.
  std::map<std::string, std::string> headers;

  /// The member "root" of the body; fails the test if the body is no such JSON.
  nlohmann::json Root() const;
};

/// A part of a form; one with a file name is a file.
struct Part {
  std::string name, content, file_name;
};
using Parts = std::vector<Part>;

/// Every host is looked for on 127.0.0.1. An address names host, port and path: "https://acme.orvane.localhost:1234/".
class HttpsClient {
 public:
  explicit HttpsClient(std::filesystem::path authority) : authority_(std::move(authority)) {}

  /// With headers such as "Range: bytes=0-".
  Reply Get(const std::string& url, const std::vector<std::string>& headers = {}) const;
  Reply Post(const std::string& url, const std::string& body) const;
  Reply PostForm(const std::string& url, const Parts& parts) const;

 private:
  std::filesystem::path authority_;
};

/// A bare TLS connection to a host of the service, for requests that no proper client sends. Cut by the destructor.
class RawConnection {
 public:
  RawConnection(const std::string& origin, const std::filesystem::path& authority);

  /// Sends everything. Returns false if the other side has ended the connection, or takes nothing for some seconds.
  bool Send(std::string_view data);

  /// Sends until the other side ends the connection, or has taken nothing for that many milliseconds.
  void SendUntilStuck(int milliseconds);

  /// What has come when the other side ends the connection, or at a deadline.
  std::string ReadToEnd();

 private:
  bool Await(short events, int milliseconds);

  std::unique_ptr<CURL, void (*)(CURL*)> curl_{curl_easy_init(), curl_easy_cleanup};
};
