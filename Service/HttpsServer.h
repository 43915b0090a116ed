// A web server over TLS on 127.0.0.1: GNU libmicrohttpd, with what a request meets as an object of its own.
#pragma once

#include <microhttpd.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>

#include "CertificateAuthority.h"

namespace orvane_service {

/// The head of a request. Valid as long as the exchange that was opened for it.
struct Request {
  MHD_Connection* connection = nullptr;
  std::string method;
  /// Path and query, not unescaped.
  std::string target;

  /// The target without its query.
  std::string Path() const { return target.substr(0, target.find('?')); }

  /// The first header of that name, whatever its case, or the empty text.
  std::string Header(const char* name) const;

  /// The client's, by which connections can be told apart.
  int ClientPort() const;
};

/// An answer.
struct Response {
  Response(int answer_status, const std::string& body, const std::string& content_type);

  /// Takes over what MHD_create_response_...() returned. Throws std::bad_alloc if that is null.
  Response(int answer_status, MHD_Response* made);

  void SetHeader(const std::string& name, const std::string& value);

  int status;
  std::unique_ptr<MHD_Response, void (*)(MHD_Response*)> content;
};

/// What becomes of one request, from its head to its answer. Used by one thread at a time; destroyed when the answer
/// has been sent or the connection has ended. What its functions throw ends the connection and is reported.
class Exchange {
 public:
  virtual ~Exchange() = default;

  /// False if the answer is known already. A client that asks before it sends its body is then told at once; of others
  /// the body is taken all the same, since many do not look for an answer while they send.
  virtual bool WantsBody() const { return true; }

  /// More of the body.
  virtual void Receive(const char* data, size_t size) = 0;

  /// True if Answer() may take long: it then has a thread of its own, and nobody waits for it but its client.
  virtual bool MayWait() const { return false; }

  /// Called when the whole request has come, or at once if no body is wanted.
  virtual Response Answer() = 0;
};

struct ServerLimits {
  /// How long a client may take for its handshake, for each step of a request's head, and for the next request.
  std::chrono::seconds first{5};
  /// How long nothing may come or go while a request is served. It covers a break of the line with the retransmission
  /// that follows, and a client whose film has become shorter while it was sent: that one would wait for ever.
  std::chrono::seconds idle{30};
  /// At once; further clients wait until one ends.
  unsigned int connections = 800;
};

class HttpsServer {
 public:
  /// Begins an exchange. Called on any thread.
  using Opener = std::function<std::unique_ptr<Exchange>(const Request&)>;

  /// The log takes a line for each fault that ended a connection. Called on any thread; may be empty.
  HttpsServer(Identity identity, Opener open, const ServerLimits& limits = ServerLimits(),
              std::function<void(const std::string&)> log = nullptr);

  /// Stops the server if it runs.
  ~HttpsServer();
  HttpsServer(const HttpsServer&) = delete;
  HttpsServer& operator=(const HttpsServer&) = delete;

  /// Listens on a port of 127.0.0.1; 0 means any free one. Throws std::runtime_error if it is in use, or if the
  /// certificate cannot be used.
  void Start(int port);

  /// Resets all connections, so that their clients know at once, and returns when every exchange has ended. Whoever
  /// waits in Exchange::Answer() must be told before.
  void Stop();

  /// Valid after Start().
  int Port() const { return port_; }

 private:
  struct Call;

  static void* OnTarget(void* server, const char* target, MHD_Connection* connection);
  static MHD_Result OnRequest(void* server, MHD_Connection* connection, const char* url, const char* method,
                              const char* version, const char* data, size_t* size, void** call);
  static void OnEnd(void* server, MHD_Connection* connection, void** call, MHD_RequestTerminationCode reason);
  static void OnConnection(void* server, MHD_Connection* connection, void** context,
                           MHD_ConnectionNotificationCode what);

  MHD_Result Advance(Call& call, const char* method, const char* data, size_t* size);
  MHD_Result AnswerApart(Call& call);
  void Report(const std::exception_ptr& fault) const;

  const Identity identity_;
  const Opener open_;
  const ServerLimits limits_;
  const std::function<void(const std::string&)> log_;
  MHD_Daemon* daemon_ = nullptr;
  std::atomic<int> port_{0};
  std::mutex mutex_;
  // Guarded by the mutex.
  bool stopping_ = false;
  std::set<int> sockets_;
  int answering_ = 0;
  std::condition_variable answered_;
};

}  // namespace orvane_service
