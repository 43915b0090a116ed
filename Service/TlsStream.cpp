#include "TlsStream.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <openssl/err.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstring>

namespace orvane_service {
namespace {

// Several TLS records (16 KiB each) for one call of the system.
constexpr size_t kReadAhead = 128 * 1024;
// One record: SSL_read() returns no more.
constexpr size_t kBufferSize = 16 * 1024;

void AddressOf(const sockaddr_in& address, std::string& ip, int& port) {
  char text[INET_ADDRSTRLEN] = "";
  inet_ntop(AF_INET, &address.sin_addr, text, sizeof(text));
  ip = text;
  port = ntohs(address.sin_port);
}

}  // namespace

TlsStream::TlsStream(SSL_CTX* context, Connection& connection)
    : ssl_(SSL_new(context)), connection_(connection), buffer_(kBufferSize) {
  if (!ssl_) return;
  SSL_set_read_ahead(ssl_.get(), 1);
  SSL_set_default_read_buffer_len(ssl_.get(), kReadAhead);
  // A write that is repeated may come from another address: the library moves what it has left.
  SSL_set_mode(ssl_.get(), SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER | SSL_MODE_ENABLE_PARTIAL_WRITE);
  SSL_set_fd(ssl_.get(), connection.Socket());
}

TlsStream::~TlsStream() = default;

// After a call that returned no success: true if it can be repeated, because the socket is ready for it now.
bool TlsStream::MayRepeat(int result) {
  switch (SSL_get_error(ssl_.get(), result)) {
    case SSL_ERROR_WANT_READ:
      return connection_.Await(POLLIN);
    case SSL_ERROR_WANT_WRITE:
      return connection_.Await(POLLOUT);
    case SSL_ERROR_ZERO_RETURN:
      return false;
    default:
      failed_ = true;
      return false;
  }
}

bool TlsStream::Accept() {
  int result = -1;
  do {
    ERR_clear_error();
    result = ssl_ ? SSL_accept(ssl_.get()) : -1;
  } while (ssl_ && result != 1 && MayRepeat(result));
  failed_ = result != 1;
  return !failed_;
}

bool TlsStream::HasData() const {
  // SSL_has_pending() counts also what was read ahead but not decrypted yet.
  return begin_ < end_ || SSL_has_pending(ssl_.get()) == 1;
}

bool TlsStream::WaitForData() {
  return HasData() || connection_.Await(POLLIN);
}

void TlsStream::Close(bool unread_data) {
  if (!ssl_) return;
  // After a failure the TLS state is undefined, and a farewell is not allowed.
  if (!failed_) SSL_shutdown(ssl_.get());
  ERR_clear_error();
  if (!unread_data) return;
  shutdown(connection_.Socket(), SHUT_WR);
  const auto deadline = std::chrono::steady_clock::now() + connection_.Limits().farewell;
  connection_.BeginStage(connection_.Limits().farewell);
  while (std::chrono::steady_clock::now() < deadline && connection_.Await(POLLIN)) {
    if (recv(connection_.Socket(), buffer_.data(), buffer_.size(), 0) <= 0) break;
  }
}

bool TlsStream::is_readable() const {
  return HasData();
}

bool TlsStream::is_writable() const {
  return !failed_;
}

ssize_t TlsStream::read(char* data, size_t size) {
  while (begin_ == end_) {
    if (failed_) return -1;
    ERR_clear_error();
    const int length = SSL_read(ssl_.get(), buffer_.data(), static_cast<int>(buffer_.size()));
    if (length > 0) {
      begin_ = 0;
      end_ = static_cast<size_t>(length);
      connection_.Count(end_);
    } else if (!MayRepeat(length)) {
      return SSL_get_error(ssl_.get(), length) == SSL_ERROR_ZERO_RETURN ? 0 : -1;
    }
  }
  const size_t count = std::min(size, end_ - begin_);
  memcpy(data, buffer_.data() + begin_, count);
  begin_ += count;
  return static_cast<ssize_t>(count);
}

ssize_t TlsStream::write(const char* data, size_t size) {
  while (!failed_) {
    ERR_clear_error();
    const int length = SSL_write(ssl_.get(), data, static_cast<int>(std::min<size_t>(size, INT_MAX)));
    if (length > 0) {
      connection_.Count(static_cast<size_t>(length));
      return length;
    }
    // A record that was sent in part leaves no way to say anything else.
    if (!MayRepeat(length)) failed_ = true;
  }
  return -1;
}

void TlsStream::get_remote_ip_and_port(std::string& ip, int& port) const {
  sockaddr_in address{};
  socklen_t length = sizeof(address);
  if (getpeername(socket(), reinterpret_cast<sockaddr*>(&address), &length) == 0) AddressOf(address, ip, port);
}

void TlsStream::get_local_ip_and_port(std::string& ip, int& port) const {
  sockaddr_in address{};
  socklen_t length = sizeof(address);
  if (getsockname(socket(), reinterpret_cast<sockaddr*>(&address), &length) == 0) AddressOf(address, ip, port);
}

}  // namespace orvane_service
