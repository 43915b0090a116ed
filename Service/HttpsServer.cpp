#include "HttpsServer.h"

#include <sys/socket.h>
#include <unistd.h>

#include <cstring>
#include <stdexcept>

namespace orvane_service {
namespace {

// Every connection occupies a thread, also while a slow client sends or a browser keeps it open.
constexpr size_t kThreads = 64;
constexpr int kKeepAliveRequests = 100;
constexpr int kKeepAliveSeconds = 5;
// For one read or write: a client whose machine or line stalls for longer is given up.
constexpr int kStallSeconds = 120;

// True if the client announced a body of which it has not sent everything.
bool HasUnreadBody(const httplib::Request& headers, uint64_t body_bytes_read) {
  if (headers.has_header("Transfer-Encoding")) return true;
  return headers.get_header_value<uint64_t>("Content-Length") > body_bytes_read;
}

}  // namespace

HttpsServer::HttpsServer(const Identity& identity) : SSLServer(identity.certificate.c_str(), identity.key.c_str()) {
  if (!is_valid() || SSL_CTX_set_min_proto_version(ssl_context(), TLS1_2_VERSION) != 1) {
    throw std::runtime_error("the server's certificate cannot be used");
  }
  new_task_queue = [] { return new httplib::ThreadPool(kThreads); };
  set_keep_alive_max_count(kKeepAliveRequests);
  set_keep_alive_timeout(kKeepAliveSeconds);
  set_read_timeout(kStallSeconds);
  set_write_timeout(kStallSeconds);
  set_tcp_nodelay(true);
  // The library would also set SO_REUSEPORT, with which a second service on the same port goes unnoticed.
  set_socket_options([](socket_t socket) {
    const int on = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof(on));
  });
}

HttpsServer::~HttpsServer() {
  Stop();
}

int HttpsServer::Start(int port) {
  const char* address = "127.0.0.1";
  if (port == 0) {
    port = bind_to_any_port(address);
    if (port < 0) throw std::runtime_error("no port is free");
  } else if (!bind_to_port(address, port)) {
    throw std::runtime_error("port " + std::to_string(port) + " is in use or not allowed: " + strerror(errno));
  }
  listener_ = std::thread([this] { listen_after_bind(); });
  // stop() has no effect before this.
  while (!is_running()) std::this_thread::yield();
  return port;
}

void HttpsServer::Stop() {
  if (!listener_.joinable()) return;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    stopping_ = true;
    for (socket_t socket : connections_) shutdown(socket, SHUT_RDWR);
  }
  stop();
  listener_.join();
}

bool HttpsServer::process_and_close_socket(socket_t sock) {
  bool serve = false;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!stopping_) serve = connections_.insert(sock).second;
  }
  if (serve) {
    TlsStream stream(ssl_context(), sock);
    if (stream.Accept()) Serve(stream);
  }
  // Under the lock, so that Stop() never shuts down a socket that has got the same number in the meantime.
  std::lock_guard<std::mutex> lock(mutex_);
  connections_.erase(sock);
  close(sock);
  return serve;
}

void HttpsServer::Serve(TlsStream& stream) {
  bool unread = false;
  for (size_t left = keep_alive_max_count_; left > 0 && !unread && stream.WaitForData(kKeepAliveSeconds * 1000);
       --left) {
    // Stays true when the library gives up before the headers are complete.
    unread = true;
    bool closed = false;
    httplib::Request headers;
    uint64_t headers_end = 0;
    const bool ok = process_request(stream, left == 1, closed, [&](httplib::Request& request) {
      // The library does not compare ranges with the size of what is sent. Files do that themselves.
      request.ranges.clear();
      headers.headers = request.headers;
      headers_end = stream.BytesRead();
      unread = false;
    });
    if (!unread) unread = HasUnreadBody(headers, stream.BytesRead() - headers_end);
    if (!ok || closed) break;
  }
  stream.Close(unread);
}

}  // namespace orvane_service
