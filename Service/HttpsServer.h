// The HTTP library's server with listener and connection loop of our own. They add what the service needs: no client
// can keep others out, whatever it sends or does not send; buffered TLS streams; a prompt stop that does not wait for
// running uploads; and answers that reach a client that is still sending.
#pragma once

#include <httplib.h>

#include <functional>
#include <list>
#include <mutex>
#include <string>
#include <thread>

#include "CertificateAuthority.h"
#include "Connection.h"

namespace orvane_service {

/// Connections at once: each has a thread, which costs little while it waits, and with the files that are arriving they
/// stay below the usual limit of 1024 open files.
constexpr size_t kMaxConnections = 700;

struct ServerLimits {
  Patience patience;
  size_t connections = kMaxConnections;
};

class HttpsServer : private httplib::SSLServer {
 public:
  /// Throws std::runtime_error if the certificate cannot be used.
  explicit HttpsServer(const Identity& identity, const ServerLimits& limits = ServerLimits());

  /// Stops the server if it runs.
  ~HttpsServer() override;

  using httplib::SSLServer::Get;
  using httplib::SSLServer::Post;
  using httplib::SSLServer::set_error_handler;
  using httplib::SSLServer::set_exception_handler;
  using httplib::SSLServer::set_expect_100_continue_handler;
  using httplib::SSLServer::set_keep_alive_max_count;
  using httplib::SSLServer::set_logger;
  using httplib::SSLServer::set_pre_routing_handler;

  /// Takes a line for each fault that ended a connection. Called on any thread.
  void SetFaultLog(std::function<void(const std::string&)> log) { fault_log_ = std::move(log); }

  /// Sees every request before its handler is looked for, and may change it. Called on any thread.
  void SetRequestHook(std::function<void(httplib::Request&)> hook) { request_hook_ = std::move(hook); }

  /// Takes a port of 127.0.0.1; 0 means any free one. Clients that connect wait until Listen(). Returns the port.
  /// Throws std::runtime_error if it is in use.
  int Bind(int port);

  /// Serves the clients in threads of its own; all handlers must have been set.
  void Listen();

  /// Both.
  int Start(int port);

  /// Cuts all connections and returns when every handler has ended.
  void Stop();

 private:
  struct Client {
    Client(int socket, const Patience& patience) : connection(socket, patience) {}

    Connection connection;
    std::thread thread;
    bool cut = false;
    bool ended = false;
  };

  void Accept();
  void Admit(int socket);
  bool MakeRoom();
  void JoinEnded();
  void Run(Client& client);
  void Serve(Connection& connection);

  const ServerLimits limits_;
  std::function<void(const std::string&)> fault_log_;
  std::function<void(httplib::Request&)> request_hook_;
  std::thread listener_;
  std::mutex mutex_;
  std::list<Client> clients_;
};

}  // namespace orvane_service
