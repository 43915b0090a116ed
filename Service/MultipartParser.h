// Takes a multipart form apart while it arrives, in pieces of any size, and keeps only a few kilobytes of it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace orvane_service {

/// The headers of one part, in bytes.
constexpr size_t kMaxPartHeadBytes = 16 * 1024;
/// What the standard allows a boundary.
constexpr size_t kMaxBoundaryBytes = 70;

/// Used by one thread.
class MultipartParser {
 public:
  /// A part begins, with its name and its file name, which is empty for one that is no file. Returns false to stop.
  using PartSink = std::function<bool(const std::string& name, const std::string& file_name)>;
  /// More of the current part. Returns false to stop.
  using DataSink = std::function<bool(const char* data, size_t size)>;

  MultipartParser(const std::string& boundary, PartSink begin, DataSink append)
      : delimiter_("\r\n--" + boundary), begin_(std::move(begin)), append_(std::move(append)) {}

  /// More of the form. Returns false if it is malformed or a sink stopped it; then nothing more may be fed.
  bool Feed(const char* data, size_t size);

  /// True when the form's last boundary has come.
  bool IsComplete() const { return state_ == State::kEpilogue; }

 private:
  enum class State { kPreamble, kDelimiter, kHead, kData, kEpilogue };
  enum class Step { kGoOn, kNeedMore, kFail };

  Step FindDelimiter();
  Step ReadDelimiterEnd();
  Step ReadHead();
  Step TakeStep();

  const std::string delimiter_;
  const PartSink begin_;
  const DataSink append_;
  State state_ = State::kPreamble;
  // What has come and is not understood yet. The form's first boundary has no line end before it.
  std::string buffer_ = "\r\n";
  // How much of the buffer is done with.
  size_t done_ = 0;
};

/// The boundary that the Content-Type of a form tells. Nothing if it is of another type, or of a form without a proper
/// boundary.
std::optional<std::string> BoundaryOf(std::string_view content_type);

}  // namespace orvane_service
