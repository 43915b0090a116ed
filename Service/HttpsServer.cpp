#include "HttpsServer.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <stdexcept>

#include "RequestStream.h"
#include "TlsStream.h"

namespace orvane_service {
namespace {

constexpr int kKeepAliveRequests = 100;
// Clients that the system keeps until they are accepted: a burst waits here, and does not have to connect again.
constexpr int kBacklog = 1024;
// Connections that were cut and whose threads have not ended yet. They do so at once, unless the machine is overloaded.
constexpr size_t kEnding = 100;
// Until another try when something is lacking; clients keep waiting.
constexpr std::chrono::milliseconds kPause(10);
constexpr int kTriesForRoom = 100;

// The library never sees such a request.
void AnswerBadHead(httplib::Stream& stream, int status) {
  stream.write("HTTP/1.1 " + std::to_string(status) + " Refused\r\nConnection: close\r\nContent-Length: 0\r\n\r\n");
}

}  // namespace

HttpsServer::HttpsServer(const Identity& identity, const ServerLimits& limits)
    : SSLServer(identity.certificate.c_str(), identity.key.c_str()), limits_(limits) {
  if (!is_valid() || SSL_CTX_set_min_proto_version(ssl_context(), TLS1_2_VERSION) != 1) {
    throw std::runtime_error("the server's certificate cannot be used");
  }
  set_keep_alive_max_count(kKeepAliveRequests);
}

HttpsServer::~HttpsServer() {
  Stop();
  if (svr_sock_ != INVALID_SOCKET) close(svr_sock_);
}

int HttpsServer::Bind(int port) {
  const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (listener < 0) throw std::runtime_error(std::string("no socket: ") + strerror(errno));
  // The library stops to send content when it has none.
  svr_sock_ = listener;
  const int on = 1;
  setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof(on));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof(address);
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener, generic, length) != 0 || ::listen(listener, kBacklog) != 0 ||
      getsockname(listener, generic, &length) != 0) {
    throw std::runtime_error("port " + std::to_string(port) + " is in use or not allowed: " + strerror(errno));
  }
  return ntohs(address.sin_port);
}

void HttpsServer::Listen() {
  listener_ = std::thread([this] { Accept(); });
}

int HttpsServer::Start(int port) {
  const int bound = Bind(port);
  Listen();
  return bound;
}

void HttpsServer::Stop() {
  if (!listener_.joinable()) return;
  // Wakes the thread that accepts.
  shutdown(svr_sock_, SHUT_RDWR);
  listener_.join();
  close(svr_sock_.exchange(INVALID_SOCKET));
  {
    std::lock_guard<std::mutex> lock(mutex_);
    for (Client& client : clients_) {
      if (!client.ended) client.connection.Cut();
    }
  }
  for (Client& client : clients_) client.thread.join();
  clients_.clear();
}

void HttpsServer::Accept() {
  for (;;) {
    const int socket = accept4(svr_sock_, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
    if (socket >= 0) {
      Admit(socket);
    } else if (errno == EINVAL || errno == EBADF) {
      return;
    } else if (errno != EINTR && errno != ECONNABORTED) {
      std::this_thread::sleep_for(kPause);
    }
    JoinEnded();
  }
}

void HttpsServer::Admit(int socket) {
  const int on = 1;
  setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof(on));
  std::unique_lock<std::mutex> lock(mutex_);
  try {
    // After a burst, threads may not have come to wait for their clients yet. New clients wait in the backlog.
    for (int tries = 0; !MakeRoom(); ++tries) {
      if (tries == kTriesForRoom) throw std::runtime_error("too many connections are busy");
      lock.unlock();
      std::this_thread::sleep_for(kPause);
      JoinEnded();
      lock.lock();
    }
    Client& client = clients_.emplace_back(socket, limits_.patience);
    try {
      client.thread = std::thread([this, &client] { Run(client); });
    } catch (...) {
      clients_.pop_back();
      throw;
    }
  } catch (const std::exception& exception) {
    close(socket);
    if (fault_log_) fault_log_(exception.what());
  }
}

// When all connections are in use, the one that has waited longest for its client ends: those who do what they came for
// hardly ever wait. Returns false if there is no such one. The caller holds the lock.
bool HttpsServer::MakeRoom() {
  size_t in_use = 0;
  Client* longest = nullptr;
  int64_t longest_since = 0;
  for (Client& client : clients_) {
    if (client.cut || client.ended) continue;
    ++in_use;
    const int64_t since = client.connection.WaitingSince();
    if (since == 0 || (longest != nullptr && since >= longest_since)) continue;
    longest = &client;
    longest_since = since;
  }
  if (in_use < limits_.connections) return true;
  if (longest == nullptr || clients_.size() >= limits_.connections + kEnding) return false;
  longest->cut = true;
  longest->connection.Cut();
  return true;
}

void HttpsServer::JoinEnded() {
  std::list<Client> ended;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    for (auto client = clients_.begin(); client != clients_.end();) {
      const auto next = std::next(client);
      if (client->ended) ended.splice(ended.end(), clients_, client);
      client = next;
    }
  }
  for (Client& client : ended) client.thread.join();
}

void HttpsServer::Run(Client& client) {
  try {
    Serve(client.connection);
  } catch (const std::exception& exception) {
    // Nothing that one connection does may end the others.
    if (fault_log_) fault_log_(exception.what());
  } catch (...) {
    if (fault_log_) fault_log_("unknown");
  }
  // Under the lock, so that nobody cuts a socket that has got the same number in the meantime.
  std::lock_guard<std::mutex> lock(mutex_);
  client.ended = true;
  close(client.connection.Socket());
}

void HttpsServer::Serve(Connection& connection) {
  const Patience& patience = limits_.patience;
  TlsStream stream(ssl_context(), connection);
  connection.BeginStage(patience.handshake);
  if (!stream.Accept()) return;
  bool unread = false;
  bool ended = false;
  for (size_t left = keep_alive_max_count_; left > 0 && !ended; --left) {
    connection.BeginStage(patience.idle);
    if (!stream.WaitForData()) break;
    connection.BeginStage(patience.head);
    RequestStream request(stream);
    try {
      if (!request.ReadHead()) break;
    } catch (const BadHead& bad) {
      AnswerBadHead(stream, bad.status);
      unread = true;
      break;
    }
    connection.BeginBody();
    const bool last = left == 1 || request.Head().close;
    bool closed = false;
    const bool ok = process_request(request, last, closed, [&](httplib::Request& filled) {
      request.FillIn(filled);
      if (request_hook_) request_hook_(filled);
    });
    unread = request.HasUnreadBody();
    ended = !ok || last || closed || unread;
  }
  stream.Close(unread);
}

}  // namespace orvane_service
