// A server's end of one TLS connection, with large buffers: an upload arrives through it in blocks of its own size, not
// in the small pieces in which the HTTP library asks for it.
#pragma once

#include <httplib.h>
#include <openssl/ssl.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "Connection.h"

namespace orvane_service {

/// Used by one thread, which waits as long as the connection's patience lasts.
class TlsStream : public httplib::Stream {
 public:
  TlsStream(SSL_CTX* context, Connection& connection);
  ~TlsStream() override;

  /// The handshake. Returns false if it failed.
  bool Accept();

  /// Waits until there is something to read. Returns false if nothing comes.
  bool WaitForData();

  /// Ends the connection. If the client may still be sending, unread_data must be true: closing the socket at once
  /// would reset the connection, and the client could lose the answer that is on its way.
  void Close(bool unread_data);

  /// httplib::Stream. read() returns 0 at the end of the stream, -1 on failure. Writing is still possible after a read
  /// that failed because nothing came.
  bool is_readable() const override;
  bool is_writable() const override;
  ssize_t read(char* data, size_t size) override;
  ssize_t write(const char* data, size_t size) override;
  void get_remote_ip_and_port(std::string& ip, int& port) const override;
  void get_local_ip_and_port(std::string& ip, int& port) const override;
  socket_t socket() const override { return connection_.Socket(); }

 private:
  struct SslDeleter {
    void operator()(SSL* ssl) const { SSL_free(ssl); }
  };

  bool HasData() const;
  bool MayRepeat(int result);

  std::unique_ptr<SSL, SslDeleter> ssl_;
  Connection& connection_;
  std::vector<char> buffer_;
  size_t begin_ = 0;
  size_t end_ = 0;
  bool failed_ = false;
};

}  // namespace orvane_service
