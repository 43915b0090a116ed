// One request of a connection as the HTTP library is to see it: a head that this service has read and found good, then
// a body that ends where it ends.
#pragma once

#include <httplib.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "RequestHead.h"

namespace orvane_service {

/// Used by one thread. Writes go through to the connection.
class RequestStream : public httplib::Stream {
 public:
  /// The connection's stream must outlive this one.
  explicit RequestStream(httplib::Stream& connection) : connection_(connection) {}

  /// Reads the head of the next request, and nothing after it. Returns false if the connection ended before it began.
  /// Throws BadHead, also if the head did not come completely in time.
  bool ReadHead();

  const RequestHead& Head() const { return head_; }

  /// The library reads the request line alone from this stream; it is given the fields here. The body that it reads is
  /// no longer in chunks.
  void FillIn(httplib::Request& request) const;

  /// True if not all of the body has been read.
  bool HasUnreadBody() const { return !body_ended_; }

  /// httplib::Stream. read() returns 0 at the end of the body, -1 if the connection ends before that, or if a chunk is
  /// malformed.
  bool is_readable() const override { return true; }
  bool is_writable() const override { return connection_.is_writable(); }
  ssize_t read(char* data, size_t size) override;
  ssize_t write(const char* data, size_t size) override { return connection_.write(data, size); }
  void get_remote_ip_and_port(std::string& ip, int& port) const override {
    connection_.get_remote_ip_and_port(ip, port);
  }
  void get_local_ip_and_port(std::string& ip, int& port) const override { connection_.get_local_ip_and_port(ip, port); }
  /// The library refuses sockets that select() cannot take, although it never waits for this one itself: any low
  /// number.
  socket_t socket() const override { return 0; }

 private:
  bool ReadLine(std::string& line, size_t limit);
  bool BeginChunk();
  bool SkipTrailer();
  ssize_t Fail();

  httplib::Stream& connection_;
  RequestHead head_;
  std::string request_line_;
  size_t replayed_ = 0;
  // Of the body or of the current chunk.
  uint64_t left_ = 0;
  bool in_chunks_ = false;
  bool body_ended_ = false;
  bool failed_ = false;
};

}  // namespace orvane_service
