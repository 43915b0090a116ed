// A client's connection, and the patience that its thread has with it: every wait for the client goes through here.
#pragma once

#include <sys/types.h>

#include <atomic>
#include <chrono>
#include <cstddef>

namespace orvane_service {

/// How long a client may keep a connection's thread waiting.
struct Patience {
  /// For the whole TLS handshake, however its bytes come.
  std::chrono::milliseconds handshake{std::chrono::seconds(10)};
  /// For the whole head of a request, from its first byte.
  std::chrono::milliseconds head{std::chrono::seconds(10)};
  /// For the next request on a connection.
  std::chrono::milliseconds idle{std::chrono::seconds(5)};
  /// For kLowestBytes of a body, in either direction. It covers a short break of the line, and a client whose film has
  /// become shorter while it was sent: that one sends nothing more and would wait for ever.
  std::chrono::milliseconds body{std::chrono::seconds(12)};
  /// For the end of a connection on which the client was still sending.
  std::chrono::milliseconds farewell{std::chrono::seconds(5)};
};

/// What must go through a connection in Patience::body: 1 KiB/s with the default.
constexpr size_t kLowestBytes = 12 * 1024;

/// Used by the connection's own thread, unless it is said otherwise. The socket remains the caller's and does not
/// block.
class Connection {
 public:
  Connection(int socket, const Patience& patience) : socket_(socket), patience_(patience) {}

  int Socket() const { return socket_; }
  const Patience& Limits() const { return patience_; }

  /// From now on all waits together may last this long.
  void BeginStage(std::chrono::milliseconds time);

  /// From now on the waits for every kLowestBytes together may last Patience::body.
  void BeginBody();

  /// Bytes that have come from or gone to the client.
  void Count(size_t bytes);

  /// Waits for events of poll(). Returns false when the client has used up its time.
  bool Await(short events);

  /// Makes every wait and every transfer of the connection fail. [any thread]
  void Cut();

  /// When the wait that lasts began, in ticks of the steady clock; 0 if there is none. [any thread]
  int64_t WaitingSince() const { return waiting_since_; }

 private:
  const int socket_;
  const Patience patience_;
  std::chrono::milliseconds left_{0};
  bool in_body_ = false;
  size_t counted_ = 0;
  std::atomic<int64_t> waiting_since_{0};
};

}  // namespace orvane_service
