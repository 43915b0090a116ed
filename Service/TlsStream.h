// A server's end of one TLS connection, with large buffers: an upload arrives through it in blocks of its own size, not
// in the small pieces in which the HTTP library asks for it.
#pragma once

#include <httplib.h>
#include <openssl/ssl.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace orvane_service {

/// Used by one thread. The socket is blocking, has its time limits set, and remains the caller's.
class TlsStream : public httplib::Stream {
 public:
  TlsStream(SSL_CTX* context, socket_t socket);
  ~TlsStream() override;

  /// The handshake. Returns false if it failed.
  bool Accept();

  /// Waits until there is something to read. Returns false at the end of the time.
  bool WaitForData(int milliseconds) const;

  /// Bytes handed out by read() so far.
  uint64_t BytesRead() const { return bytes_read_; }

  /// Ends the connection. If the client may still be sending, unread_data must be true: closing the socket at once
  /// would reset the connection, and the client could lose the answer that is on its way.
  void Close(bool unread_data);

  /// httplib::Stream. read() returns 0 at the end of the stream, -1 on failure.
  bool is_readable() const override;
  bool is_writable() const override;
  ssize_t read(char* data, size_t size) override;
  ssize_t write(const char* data, size_t size) override;
  void get_remote_ip_and_port(std::string& ip, int& port) const override;
  void get_local_ip_and_port(std::string& ip, int& port) const override;
  socket_t socket() const override { return socket_; }

 private:
  struct SslDeleter {
    void operator()(SSL* ssl) const { SSL_free(ssl); }
  };

  std::unique_ptr<SSL, SslDeleter> ssl_;
  socket_t socket_;
  std::vector<char> buffer_;
  size_t begin_ = 0;
  size_t end_ = 0;
  uint64_t bytes_read_ = 0;
  bool failed_ = false;
};

}  // namespace orvane_service
