// The HTTP library's server with a connection loop of our own. It adds what the service needs: buffered TLS streams, a
// prompt stop that does not wait for running uploads, and answers that reach a client that is still sending.
#pragma once

#include <httplib.h>

#include <condition_variable>
#include <mutex>
#include <set>
#include <string>
#include <thread>

#include "CertificateAuthority.h"
#include "TlsStream.h"

namespace orvane_service {

class HttpsServer : private httplib::SSLServer {
 public:
  /// Throws std::runtime_error if the certificate cannot be used.
  explicit HttpsServer(const Identity& identity);

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

  /// Listens on 127.0.0.1 in a thread of its own; all handlers must have been set. Port 0 means any free one. Returns
  /// the port. Throws std::runtime_error if the port is in use.
  int Start(int port);

  /// Cuts all connections and returns when every handler has ended.
  void Stop();

 private:
  bool process_and_close_socket(socket_t sock) override;
  void Serve(TlsStream& stream);

  std::mutex mutex_;
  std::set<socket_t> connections_;
  bool stopping_ = false;
  std::thread listener_;
};

}  // namespace orvane_service
