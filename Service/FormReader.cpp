#include "FormReader.h"

#include <string_view>
#include <utility>

namespace orvane_service {
namespace {

// Also the longest line in the head of a part.
constexpr size_t kBufferBytes = 16 * 1024;
constexpr size_t kMaxBoundaryBytes = 200;

// The library takes everything behind "boundary=", with or without quotes, and must not be given a lone quote.
bool HasBoundary(const std::string& content_type) {
  constexpr std::string_view key = "boundary=";
  const size_t at = content_type.find(key);
  if (at == std::string::npos || content_type.size() - at > kMaxBoundaryBytes) return false;
  return content_type.find_first_not_of('"', at + key.size()) != std::string::npos;
}

}  // namespace

FormReader::FormReader(const Request& request, Taker take) : take_(std::move(take)) {
  if (!HasBoundary(request.Header("Content-Type"))) return;
  processor_.reset(MHD_create_post_processor(request.connection, kBufferBytes, &OnPiece, this));
}

void FormReader::Feed(const char* data, size_t size) {
  if (malformed_) return;
  malformed_ = processor_ == nullptr || MHD_post_process(processor_.get(), data, size) == MHD_NO;
  if (thrown_) std::rethrow_exception(std::exchange(thrown_, nullptr));
  // Nobody sends anything before the first boundary, and the library looks for it with much effort.
  preamble_ += has_parts_ ? 0 : size;
  malformed_ = malformed_ || preamble_ > 2 * kBufferBytes;
}

bool FormReader::End() {
  const bool complete = MHD_destroy_post_processor(processor_.release()) == MHD_YES;
  return complete && !malformed_ && has_parts_;
}

MHD_Result FormReader::OnPiece(void* reader, MHD_ValueKind, const char* name, const char* file_name, const char*,
                               const char*, const char* data, uint64_t offset, size_t size) {
  auto* const self = static_cast<FormReader*>(reader);
  if (name == nullptr) return MHD_NO;
  // The library may begin a part with an empty piece when it has not seen its content yet.
  const bool continues = offset > 0 || (size > 0 && self->empty_name_ == name);
  self->empty_name_.reset();
  if (offset == 0 && size == 0) self->empty_name_ = name;
  self->has_parts_ = true;
  try {
    self->take_({name, file_name, !continues, data, size});
    return MHD_YES;
  } catch (...) {
    self->thrown_ = std::current_exception();
    return MHD_NO;
  }
}

}  // namespace orvane_service
