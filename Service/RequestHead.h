// The head of an HTTP/1.1 request, read more strictly than the HTTP library does: what two readers could understand in
// two ways is refused.
#pragma once

#include <httplib.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvane_service {

/// Largest head of a request, in bytes, with the empty line at its end.
constexpr size_t kMaxHeadBytes = 64 * 1024;
/// Longest target (path and query) in bytes. The library matches it with regular expressions, which use the stack.
constexpr size_t kMaxTargetBytes = 8000;

struct RequestHead {
  std::string method;
  std::string target;
  httplib::Headers headers;
  /// The body comes in chunks, and has no length.
  bool chunked = false;
  /// Of a body that is not chunked, in bytes.
  uint64_t length = 0;
  /// The client ends the connection after this request.
  bool close = false;
};

/// Why a head is refused, as an HTTP status.
struct BadHead {
  int status = 400;
};

/// Reads a head with the empty line at its end. Throws BadHead.
RequestHead ParseRequestHead(std::string_view text);

/// The size in the first line of a chunk, without the line's end: hexadecimal digits, and extensions that nobody knows.
/// Nothing for any other text, and for a size that does not fit.
std::optional<uint64_t> ParseChunkSize(std::string_view line);

}  // namespace orvane_service
