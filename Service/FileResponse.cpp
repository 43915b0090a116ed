#include "FileResponse.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <memory>
#include <vector>

namespace orvane_service {
namespace {

constexpr size_t kBlock = 256 * 1024;

// An open file and the block through which it is sent.
struct Source {
  explicit Source(int fd) : descriptor(fd), block(kBlock) {}
  ~Source() { close(descriptor); }
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;

  const int descriptor;
  std::vector<char> block;
};

std::optional<uint64_t> ParseNumber(std::string_view text) {
  uint64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

bool SendBlock(Source& source, uint64_t offset, uint64_t length, httplib::DataSink& sink) {
  const size_t wanted = static_cast<size_t>(std::min<uint64_t>(length, source.block.size()));
  const ssize_t count = pread(source.descriptor, source.block.data(), wanted, static_cast<off_t>(offset));
  // At 0 the file has become shorter; the connection is cut so that the client notices.
  return count > 0 && sink.write(source.block.data(), static_cast<size_t>(count));
}

RangeRequest RangeFor(const httplib::Request& request, uint64_t size, const std::string& entity_tag) {
  // A client that continues a download names the content that it has; other content is sent whole.
  if (request.has_header("If-Range") && request.get_header_value("If-Range") != entity_tag) return {};
  return ParseRange(request.get_header_value("Range"), size);
}

}  // namespace

RangeRequest ParseRange(std::string_view header, uint64_t size) {
  constexpr std::string_view unit = "bytes=";
  if (header.substr(0, unit.size()) != unit) return {};
  header.remove_prefix(unit.size());
  const size_t dash = header.find('-');
  if (dash == std::string_view::npos) return {};
  const std::optional<uint64_t> first = ParseNumber(header.substr(0, dash));
  const std::optional<uint64_t> last = ParseNumber(header.substr(dash + 1));
  if (dash == 0 && last) {
    // The last bytes.
    const uint64_t length = std::min(*last, size);
    if (length == 0) return {RangeKind::kNotSatisfiable, {}};
    return {RangeKind::kPart, {size - length, length}};
  }
  const bool open_end = dash + 1 == header.size();
  if (!first || (!last && !open_end) || (last && *last < *first)) return {};
  if (*first >= size) return {RangeKind::kNotSatisfiable, {}};
  const uint64_t end = last ? std::min(*last, size - 1) : size - 1;
  return {RangeKind::kPart, {*first, end - *first + 1}};
}

void SendFile(const httplib::Request& request, httplib::Response& response, const std::filesystem::path& path,
              const std::string& content_type, const std::string& entity_tag) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  response.status = 404;
  if (descriptor < 0) return;
  auto source = std::make_shared<Source>(descriptor);
  struct stat info {};
  if (fstat(descriptor, &info) != 0 || !S_ISREG(info.st_mode)) return;
  const uint64_t size = static_cast<uint64_t>(info.st_size);

  const RangeRequest wanted = RangeFor(request, size, entity_tag);
  if (wanted.kind == RangeKind::kNotSatisfiable) {
    response.status = 416;
    response.set_header("Content-Range", "bytes */" + std::to_string(size));
    return;
  }
  ByteRange range{0, size};
  response.status = 200;
  if (wanted.kind == RangeKind::kPart) {
    range = wanted.range;
    response.status = 206;
    response.set_header("Content-Range", "bytes " + std::to_string(range.offset) + "-" +
                                             std::to_string(range.offset + range.length - 1) + "/" +
                                             std::to_string(size));
  }
  if (!response.has_header("Accept-Ranges")) response.set_header("Accept-Ranges", "bytes");
  if (!entity_tag.empty()) response.set_header("ETag", entity_tag);
  if (size == 0) {
    response.set_content("", content_type);
    return;
  }
  response.set_content_provider(range.length, content_type,
                                [source, range](size_t offset, size_t length, httplib::DataSink& sink) {
                                  return SendBlock(*source, range.offset + offset, length, sink);
                                });
}

}  // namespace orvane_service
