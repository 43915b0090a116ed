// A client of the service for tests: libcurl, with TLS verified against the service's own authority.
#pragma once

#include <curl/curl.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct Reply {
  CURLcode result = CURLE_OK;
  long status = 0;
  std::string headers;
  std::string body;
  /// Bytes of the request's body that were sent.
  curl_off_t sent = 0;

  /// The member "root" of the body; fails the test if the body is no such JSON.
  nlohmann::json Root() const;
};

/// A part of a form; with a file name it is a file.
struct Part {
  std::string name;
  std::string content;
  std::optional<std::string> file_name;
};

class HttpsClient {
 public:
  explicit HttpsClient(std::filesystem::path authority) : authority_(std::move(authority)) {}

  /// Each header is a line such as "Range: bytes=0-1", without a line end.
  Reply Get(const std::string& url, const std::vector<std::string>& headers = {}) const;
  Reply Post(const std::string& url, const std::string& body) const;
  Reply PostForm(const std::string& url, const std::vector<Part>& parts,
                 const std::vector<std::string>& headers = {}) const;

 private:
  std::filesystem::path authority_;
};

/// A bare TLS connection to a host of the service, for requests that no proper client sends. Cut by the destructor.
class RawConnection {
 public:
  RawConnection(const std::string& origin, const std::filesystem::path& authority);
  ~RawConnection();
  RawConnection(const RawConnection&) = delete;
  RawConnection& operator=(const RawConnection&) = delete;

  /// Sends everything; fails the test if the connection breaks.
  void Send(std::string_view data);

  /// What has come when the other side ends the connection, or at a deadline.
  std::string ReadToEnd();

 private:
  CURL* curl_;
};
