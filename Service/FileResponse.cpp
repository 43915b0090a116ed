#include "FileResponse.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>

namespace orvane_service {
namespace {

std::optional<uint64_t> ParseNumber(std::string_view text) {
  uint64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

}  // namespace

std::optional<ByteRange> ParseRange(std::string_view header, uint64_t size) {
  constexpr std::string_view unit = "bytes=";
  const size_t dash = header.find('-');
  if (header.substr(0, unit.size()) != unit || dash == header.npos) return std::nullopt;
  const std::string_view begin = header.substr(unit.size(), dash - unit.size());
  const std::string_view end = header.substr(dash + 1);
  const std::optional<uint64_t> first = ParseNumber(begin);
  const std::optional<uint64_t> last = ParseNumber(end);
  if (begin.empty() && last) {
    // The last bytes.
    const uint64_t length = std::min(*last, size);
    return ByteRange{size - length, length};
  }
  if (!first || (!last && !end.empty()) || (last && *last < *first)) return std::nullopt;
  if (*first >= size) return ByteRange{};
  return ByteRange{*first, std::min(last.value_or(size - 1), size - 1) - *first + 1};
}

std::optional<Response> FileResponse(const Request& request, const std::filesystem::path& path,
                                     const std::string& content_type, const std::string& entity_tag) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return std::nullopt;
  struct stat info {};
  if (fstat(descriptor, &info) != 0 || !S_ISREG(info.st_mode)) {
    close(descriptor);
    return std::nullopt;
  }
  const uint64_t size = static_cast<uint64_t>(info.st_size);
  // A client that continues a download names the content that it has; other content is sent whole.
  const std::string condition = request.Header("If-Range");
  std::optional<ByteRange> part;
  if (condition.empty() || condition == entity_tag) part = ParseRange(request.Header("Range"), size);
  const int status = !part ? 200 : part->length > 0 ? 206 : 416;
  const ByteRange range = part.value_or(ByteRange{0, size});
  Response response(status, MHD_create_response_from_fd_at_offset64(range.length, descriptor, range.offset));
  if (part) {
    const std::string sent = std::to_string(range.offset) + "-" + std::to_string(range.offset + range.length - 1);
    response.SetHeader("Content-Range", "bytes " + (status == 206 ? sent : "*") + "/" + std::to_string(size));
  }
  response.SetHeader("Content-Type", content_type);
  response.SetHeader("Accept-Ranges", "bytes");
  if (!entity_tag.empty()) response.SetHeader("ETag", entity_tag);
  return response;
}

}  // namespace orvane_service
