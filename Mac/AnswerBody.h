// Collecting the body of an answer up to a limit.
#pragma once

#include <cstddef>
#include <ostream>
#include <streambuf>
#include <string>
#include <utility>

/// Keeps what is written to its stream, and no more than the limit: the write that goes beyond it fails, and sets the
/// stream's bad bit. [any-thread]
class AnswerBody {
 public:
  /// The limit is in bytes.
  explicit AnswerBody(size_t limit) : buffer_(limit), stream_(&buffer_) {}
  AnswerBody(const AnswerBody&) = delete;
  AnswerBody& operator=(const AnswerBody&) = delete;

  /// Lives as long as this object.
  std::ostream& Stream() { return stream_; }

  /// Moves what was written out. Nothing may be written afterwards.
  std::string Take() { return std::move(buffer_.text); }

 private:
  struct Buffer : std::streambuf {
    explicit Buffer(size_t bytes) : limit(bytes) {}
    std::streamsize xsputn(const char* bytes, std::streamsize count) override;

    const size_t limit;
    std::string text;
  };

  Buffer buffer_;
  std::ostream stream_;
};
