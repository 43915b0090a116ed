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
// How long a client that is still sending may take to notice that it was refused.
constexpr std::chrono::seconds kLinger(5);

bool Poll(socket_t socket, short events, int milliseconds) {
  pollfd entry{socket, events, 0};
  int result;
  do {
    result = poll(&entry, 1, milliseconds);
  } while (result < 0 && errno == EINTR);
  return result > 0;
}

void AddressOf(const sockaddr_in& address, std::string& ip, int& port) {
  char text[INET_ADDRSTRLEN] = "";
  inet_ntop(AF_INET, &address.sin_addr, text, sizeof(text));
  ip = text;
  port = ntohs(address.sin_port);
}

}  // namespace

TlsStream::TlsStream(SSL_CTX* context, socket_t socket)
    : ssl_(SSL_new(context)), socket_(socket), buffer_(kBufferSize) {
  if (!ssl_) return;
  SSL_set_read_ahead(ssl_.get(), 1);
  SSL_set_default_read_buffer_len(ssl_.get(), kReadAhead);
  SSL_set_fd(ssl_.get(), socket);
}

TlsStream::~TlsStream() = default;

bool TlsStream::Accept() {
  ERR_clear_error();
  failed_ = !ssl_ || SSL_accept(ssl_.get()) != 1;
  return !failed_;
}

bool TlsStream::WaitForData(int milliseconds) const {
  // SSL_has_pending() counts also what was read ahead but not decrypted yet.
  return begin_ < end_ || SSL_has_pending(ssl_.get()) == 1 || Poll(socket_, POLLIN, milliseconds);
}

void TlsStream::Close(bool unread_data) {
  if (!ssl_) return;
  // After a failure the TLS state is undefined, and a farewell is not allowed.
  if (!failed_) SSL_shutdown(ssl_.get());
  ERR_clear_error();
  if (!unread_data) return;
  shutdown(socket_, SHUT_WR);
  const auto deadline = std::chrono::steady_clock::now() + kLinger;
  std::vector<char> waste(kReadAhead);
  while (std::chrono::steady_clock::now() < deadline) {
    if (!Poll(socket_, POLLIN, 100)) continue;
    if (recv(socket_, waste.data(), waste.size(), 0) <= 0) break;
  }
}

bool TlsStream::is_readable() const {
  return WaitForData(0);
}

bool TlsStream::is_writable() const {
  return !failed_;
}

ssize_t TlsStream::read(char* data, size_t size) {
  if (begin_ == end_) {
    ERR_clear_error();
    const int length = SSL_read(ssl_.get(), buffer_.data(), static_cast<int>(buffer_.size()));
    if (length <= 0) {
      const bool ended = SSL_get_error(ssl_.get(), length) == SSL_ERROR_ZERO_RETURN;
      if (!ended) failed_ = true;
      return ended ? 0 : -1;
    }
    begin_ = 0;
    end_ = static_cast<size_t>(length);
  }
  const size_t count = std::min(size, end_ - begin_);
  memcpy(data, buffer_.data() + begin_, count);
  begin_ += count;
  bytes_read_ += count;
  return static_cast<ssize_t>(count);
}

ssize_t TlsStream::write(const char* data, size_t size) {
  if (failed_) return -1;
  ERR_clear_error();
  const int length = SSL_write(ssl_.get(), data, static_cast<int>(std::min<size_t>(size, INT_MAX)));
  if (length <= 0) failed_ = true;
  return length <= 0 ? -1 : length;
}

void TlsStream::get_remote_ip_and_port(std::string& ip, int& port) const {
  sockaddr_in address{};
  socklen_t length = sizeof(address);
  if (getpeername(socket_, reinterpret_cast<sockaddr*>(&address), &length) == 0) AddressOf(address, ip, port);
}

void TlsStream::get_local_ip_and_port(std::string& ip, int& port) const {
  sockaddr_in address{};
  socklen_t length = sizeof(address);
  if (getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &length) == 0) AddressOf(address, ip, port);
}

}  // namespace orvane_service
