// Sending a file from the disk, whole or in part.
#pragma once

#include <httplib.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace orvane_service {

/// A part of a file, in bytes.
struct ByteRange {
  uint64_t offset = 0;
  uint64_t length = 0;
};

enum class RangeKind { kWhole, kPart, kNotSatisfiable };

struct RangeRequest {
  RangeKind kind = RangeKind::kWhole;
  /// Set for kPart: within the file, at least one byte.
  ByteRange range;
};

/// Reads a Range header for a file of the given size. Several ranges, and what is no range, ask for the whole file.
RangeRequest ParseRange(std::string_view header, uint64_t size);

/// Answers with the file, or with the part that the Range header asks for: 200, 206 or 416, or 404 if there is no such
/// file. The entity tag identifies the content; without one, ranges are sent unconditionally. The file is read as it is
/// sent, and stays open until then.
void SendFile(const httplib::Request& request, httplib::Response& response, const std::filesystem::path& path,
              const std::string& content_type, const std::string& entity_tag);

}  // namespace orvane_service
