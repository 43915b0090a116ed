// A web server over TLS on 127.0.0.1 that answers as a test tells it to, wrongly if need be.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orvane_test {

/// A request as it arrived.
struct Request {
  std::string method;
  /// Path and query, not unescaped.
  std::string target;
  /// In the order of arrival, with names in lower case.
  std::vector<std::pair<std::string, std::string>> headers;
  /// Without the framing of a chunked transfer.
  std::string body;
  /// Number of the TCP connection that it came through, from 1.
  int connection = 0;

  /// The first header of that name (lower case), or an empty string.
  std::string Header(const std::string& name) const;
};

/// An answer, or as much of it as shall be sent.
struct Response {
  static constexpr size_t kWhole = static_cast<size_t>(-1);

  int status = 200;
  /// Beside Content-Length, which is added.
  std::vector<std::pair<std::string, std::string>> headers;
  std::string body;
  /// What passes before the answer begins.
  std::chrono::milliseconds delay{0};
  /// When not 0, the body is sent chunked (so without a length) in pieces of that many bytes.
  size_t chunkSize = 0;
  /// What passes before every chunk but the first.
  std::chrono::milliseconds chunkDelay{0};
  /// The connection is closed after that many bytes of the body, although more were announced.
  size_t cutAfter = kWhole;
};

/// An answer with that body and nothing unusual.
Response TextResponse(std::string body, int status = 200);

/// The certificate that a server shows.
enum class ServerCertificate {
  kTrusted,           ///< for the deployment's hosts, signed by the authority of AuthorityFile()
  kUnknownAuthority,  ///< for the deployment's hosts, signed by another authority
  kWrongName,         ///< signed by the authority, for another host
};

/// Listens from construction to destruction, on a free port. Every connection has a thread of its own. All operations
/// may be called on any thread. Destruction ends transfers and delays that are under way, but waits for handlers.
class HttpsServer {
 public:
  /// Called on the connection's thread, for several connections at the same time. May wait.
  using Handler = std::function<Response(const Request&)>;

  /// Throws std::runtime_error when it cannot listen.
  explicit HttpsServer(ServerCertificate certificate = ServerCertificate::kTrusted);
  ~HttpsServer();
  HttpsServer(const HttpsServer&) = delete;
  HttpsServer& operator=(const HttpsServer&) = delete;

  /// Answers requests for the target ("/path?query"), whatever the method. Replaces an earlier route of that target.
  void Route(const std::string& target, Handler handler);
  /// The same, with an answer that is always the same.
  void Route(const std::string& target, Response response);

  /// Answers whatever has no route; at first that is a 404.
  void RouteOthers(Handler handler);

  /// The requests so far, in the order in which they were complete.
  std::vector<Request> Requests() const;

  /// Waits until there are that many requests. Returns false when the time is over before.
  bool WaitForRequests(size_t count, std::chrono::milliseconds deadline) const;

  /// TCP connections so far, those included whose handshake failed.
  int ConnectionCount() const;

  int port() const;

  /// PEM file with the authority that kTrusted needs. The same for all servers of the process; removed at its end.
  static const std::string& AuthorityFile();

 private:
  class Implementation;
  const std::unique_ptr<Implementation> implementation_;
};

}  // namespace orvane_test
