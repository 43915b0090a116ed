// A client of the service for tests, which can send what no proper client sends. TLS is verified against the service's
// own authority.
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
  /// 0 when there was no answer.
  int status = 0;
  /// By their names in lower case.
  std::map<std::string, std::string> headers;
  std::string body;

  /// The member "root" of the body; fails the test if the body is no such JSON.
  nlohmann::json Root() const;
};

/// A part of a form; one with a file name is a file.
struct Part {
  std::string name, content, file_name;
};
using Parts = std::vector<Part>;

/// The type of a form, the form without its end, and its end.
constexpr const char* kFormType = "Content-Type: multipart/form-data; boundary=xyz\r\n";
std::string FormText(const Parts& parts);
constexpr const char* kFormEnd = "--xyz--\r\n";

/// A connection, cut by the destructor: over TLS to "https://acme.orvane.localhost:1234", or bare with "http".
class Connection {
 public:
  explicit Connection(const std::string& origin, const std::filesystem::path& authority = {});

  /// Sends everything. Returns false if the other side ends the connection before, or takes nothing for that many
  /// milliseconds.
  bool Send(std::string_view data, int milliseconds = 20000);

  /// What has come when the other side ends the connection, or at a deadline.
  Reply ReadToEnd();

 private:
  bool Await(short events, int milliseconds);

  std::unique_ptr<CURL, void (*)(CURL*)> curl_{curl_easy_init(), curl_easy_cleanup};
};

/// An address names host, port and path: "https://acme.orvane.localhost:1234/". Headers end in line ends.
class HttpsClient {
 public:
  explicit HttpsClient(std::filesystem::path authority) : authority_(std::move(authority)) {}

  Reply Get(const std::string& url, const std::string& headers = "") const { return Ask("GET", url, headers, ""); }
  Reply Post(const std::string& url, const std::string& body, const std::string& headers = "") const;
  Reply PostForm(const std::string& url, const Parts& parts) const;

  /// A request of which only the method, the host and these headers and bytes are sent.
  Reply Ask(const std::string& method, const std::string& url, const std::string& headers,
            const std::string& body) const;

 private:
  std::filesystem::path authority_;
};
