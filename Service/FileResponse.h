// Sending a file from the disk, whole or in part.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "HttpsServer.h"

namespace orvane_service {

/// A part of a file, in bytes. No length: nothing of the file is meant.
struct ByteRange {
  uint64_t offset = 0;
  uint64_t length = 0;
};

/// Reads a Range header for a file of the given size. Nothing for several ranges, and for what is no range: they ask
/// for the whole file.
std::optional<ByteRange> ParseRange(std::string_view header, uint64_t size);

/// The file, or the part that the Range header asks for: 200, 206 or 416. Nothing if there is no such file. The entity
/// tag identifies the content; without one, ranges are sent unconditionally.
std::optional<Response> FileResponse(const Request& request, const std::filesystem::path& path,
                                     const std::string& content_type, const std::string& entity_tag);

}  // namespace orvane_service
