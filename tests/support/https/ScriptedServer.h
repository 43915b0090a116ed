// A web server over TLS on 127.0.0.1 that answers as a test tells it to, wrongly if need be.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace orvane_service {
class HttpsServer;
}

namespace orvane_test {

struct FormPart {
  std::string name;
  /// Empty for a part that is no file.
  std::string fileName;
  std::string content;
};

/// A request as it arrived.
struct Request {
  std::string method;
  /// Path and query, not unescaped.
  std::string target;
  std::multimap<std::string, std::string> headers;
  /// Empty for a multipart form.
  std::string body;
  /// Those of a multipart form, in their order.
  std::vector<FormPart> parts;
  /// Port of the client, by which the connections can be told apart.
  int clientPort = 0;

  /// The first header of that name, whatever its case, or an empty string.
  std::string Header(const std::string& name) const;
};

/// An answer, or as much of it as shall be sent.
struct Response {
  static constexpr size_t kWhole = static_cast<size_t>(-1);

  int status = 200;
  /// Beside Content-Length and Content-Type, which are added.
  std::vector<std::pair<std::string, std::string>> headers;
  std::string body;
  /// The connection is closed after that many bytes of the body, although more were announced.
  size_t cutAfter = kWhole;
};

/// An answer with that body and nothing unusual.
Response TextResponse(std::string body, int status = 200);

/// Listens from construction to destruction, on a free port: the service's own server, with other handlers. All
/// operations may be called on any thread. Destruction ends transfers that are under way, but waits for handlers.
class ScriptedServer {
 public:
  /// Called on a thread of the request's own, for several at the same time. May wait.
  using Handler = std::function<Response(const Request&)>;

  /// Throws std::runtime_error when it cannot listen.
  ScriptedServer();
  ~ScriptedServer();
  ScriptedServer(const ScriptedServer&) = delete;
  ScriptedServer& operator=(const ScriptedServer&) = delete;

  /// Answers GET and POST of the target ("/path?query"). Replaces an earlier route of that target.
  void Route(const std::string& target, Handler handler);
  /// The same, with an answer that is always the same.
  void Route(const std::string& target, Response response);

  /// Answers whatever has no route; at first that is a 404.
  void RouteOthers(Handler handler);

  /// The requests so far, in the order in which they were complete. One whose body is cut off or malformed is none.
  std::vector<Request> Requests() const;

  int port() const { return port_; }

  /// PEM file with the authority that its clients need. The same for all servers of the process; removed at its end.
  static const std::string& AuthorityFile();

 private:
  class Visit;

  /// Writes the request down and returns its answer.
  Response Answer(const Request& request);

  mutable std::mutex mutex_;
  // Guarded by the mutex.
  std::map<std::string, Handler> routes_;
  Handler others_;
  std::vector<Request> requests_;

  std::unique_ptr<orvane_service::HttpsServer> server_;
  int port_ = 0;
};

}  // namespace orvane_test
