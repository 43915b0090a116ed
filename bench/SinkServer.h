// The service that the benchmarks talk to: it answers at once and throws uploads away as fast as it can.
#pragma once

#include <openssl/ssl.h>

#include <atomic>
#include <memory>
#include <string>

namespace bench {

/// A web server over TLS (HTTP/1.1) on 127.0.0.1 for orvane.localhost and the names below it. It logs everybody in, has
/// two projects with the folders of FolderTree.h, and takes every upload. It answers at once, but after 5 milliseconds,
/// as from the next town, when asked for folders of the project "far". GET /statistics answers a JSON object with the
/// numbers of "connections", "requests" and "bodyBytes" so far, which leave such questions out.
class SinkServer {
 public:
  /// Listens on a free port and writes the certificate of its authority, as PEM, to that new file, the keys beside it.
  /// Throws std::runtime_error.
  explicit SinkServer(const std::string& authorityFile);
  ~SinkServer();
  SinkServer(const SinkServer&) = delete;
  SinkServer& operator=(const SinkServer&) = delete;

  int port() const { return port_; }

  /// Accepts connections for ever, each on a thread of its own.
  [[noreturn]] void Serve();

 private:
  struct Request;

  void MakeContext(const std::string& authorityFile);
  void Listen();
  void ServeConnection(int socket);
  bool ServeRequest(SSL* tls, bool& counted);
  bool ReadHead(SSL* tls, Request& request);
  bool ReadBody(SSL* tls, Request& request);
  std::string Answer(const Request& request) const;
  std::string Statistics() const;

  std::unique_ptr<SSL_CTX, void (*)(SSL_CTX*)> context_;
  int listener_ = -1;
  int port_ = 0;
  std::atomic<long long> connections_{0};
  std::atomic<long long> requests_{0};
  std::atomic<long long> bodyBytes_{0};
};

}  // namespace bench
