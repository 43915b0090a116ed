#include "RequestStream.h"

#include <algorithm>

namespace orvane_service {
namespace {

// With extensions; nobody sends longer ones.
constexpr size_t kMaxChunkLine = 256;

bool EndsWith(const std::string& text, std::string_view end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

}  // namespace

bool RequestStream::ReadHead() {
  std::string text;
  char c = 0;
  do {
    if (text.size() == kMaxHeadBytes) throw BadHead{431};
    if (connection_.read(&c, 1) != 1) {
      if (text.empty()) return false;
      throw BadHead{408};
    }
    text += c;
    // Some clients end a body with a line end too many.
    if (text == "\r\n") text.clear();
  } while (!EndsWith(text, "\r\n\r\n"));
  head_ = ParseRequestHead(text);
  request_line_ = head_.method + " " + head_.target + " HTTP/1.1\r\n\r\n";
  left_ = head_.length;
  body_ended_ = !head_.chunked && left_ == 0;
  return true;
}

void RequestStream::FillIn(httplib::Request& request) const {
  request.headers = head_.headers;
  request.headers.erase("Transfer-Encoding");
}

ssize_t RequestStream::Fail() {
  failed_ = true;
  return -1;
}

ssize_t RequestStream::read(char* data, size_t size) {
  if (replayed_ < request_line_.size()) {
    const size_t count = request_line_.copy(data, size, replayed_);
    replayed_ += count;
    return static_cast<ssize_t>(count);
  }
  if (failed_) return -1;
  if (head_.chunked && left_ == 0 && !body_ended_ && !BeginChunk()) return Fail();
  if (body_ended_) return 0;
  const ssize_t count = connection_.read(data, static_cast<size_t>(std::min<uint64_t>(size, left_)));
  if (count <= 0) return Fail();
  left_ -= static_cast<uint64_t>(count);
  if (left_ == 0 && !head_.chunked) body_ended_ = true;
  return count;
}

// Reads up to the end of a line, which is taken off. Returns false if the connection ends or the line is too long.
bool RequestStream::ReadLine(std::string& line, size_t limit) {
  line.clear();
  char c = 0;
  while (!EndsWith(line, "\r\n")) {
    if (line.size() == limit || connection_.read(&c, 1) != 1) return false;
    line += c;
  }
  line.resize(line.size() - 2);
  return true;
}

bool RequestStream::BeginChunk() {
  std::string line;
  // The end of the chunk before.
  if (in_chunks_ && (!ReadLine(line, 2) || !line.empty())) return false;
  in_chunks_ = true;
  if (!ReadLine(line, kMaxChunkLine)) return false;
  const std::optional<uint64_t> chunk = ParseChunkSize(line);
  if (!chunk) return false;
  left_ = *chunk;
  if (left_ == 0) body_ended_ = SkipTrailer();
  return left_ > 0 || body_ended_;
}

// The fields after the last chunk are read and dropped.
bool RequestStream::SkipTrailer() {
  std::string line;
  for (size_t left = kMaxHeadBytes; ReadLine(line, left); left -= line.size() + 2) {
    if (line.empty()) return true;
  }
  return false;
}

}  // namespace orvane_service
