// Clients of the service for tests: TLS is verified against the service's own authority.
#pragma once

#include <curl/curl.h>
#include <httplib.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

/// The status is -1 when there was no answer.
struct Reply : httplib::Response {
  /// The member "root" of the body; fails the test if the body is no such JSON.
  nlohmann::json Root() const;
};

/// The parts of a form; one with a file name is a file.
using Parts = httplib::MultipartFormDataItems;

/// Every host is looked for on 127.0.0.1. An address names host, port and path: "https://acme.orvane.localhost:1234/".
class HttpsClient {
 public:
  explicit HttpsClient(std::filesystem::path authority) : authority_(std::move(authority)) {}

  Reply Get(const std::string& url, const httplib::Headers& headers = {}) const;
  Reply Post(const std::string& url, const std::string& body) const;
  Reply PostForm(const std::string& url, const Parts& parts) const;

 private:
  Reply Send(const std::string& url,
             const std::function<httplib::Result(httplib::SSLClient& client, const std::string& path)>& send) const;

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

  /// Sends a little. Returns false if the other side has ended the connection.
  bool TrySend(std::string_view data);

  /// What has come when the other side ends the connection, or at a deadline.
  std::string ReadToEnd();

 private:
  CURL* curl_;
};
