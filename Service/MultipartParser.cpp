#include "MultipartParser.h"

#include <strings.h>

#include <algorithm>
#include <map>

namespace orvane_service {
namespace {

bool Equals(std::string_view a, std::string_view b) {
  return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

void SkipBlanks(std::string_view& text) {
  text.remove_prefix(std::min(text.size(), text.find_first_not_of(" \t")));
}

// Takes a quoted text off, without its quotes. Of escapes there are only those that some clients make of a quote and of
// a backslash.
std::optional<std::string> TakeQuoted(std::string_view& text) {
  std::string value;
  for (size_t i = 1; i < text.size(); ++i) {
    if (text[i] == '"') {
      text.remove_prefix(i + 1);
      return value;
    }
    const bool escaped = text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == '"' || text[i + 1] == '\\');
    value += escaped ? text[++i] : text[i];
  }
  return std::nullopt;
}

std::optional<std::string> TakeValue(std::string_view& text) {
  if (!text.empty() && text[0] == '"') return TakeQuoted(text);
  const std::string value(text.substr(0, text.find_first_of("; \t")));
  text.remove_prefix(value.size());
  return value;
}

using Parameters = std::map<std::string, std::string>;

// Reads a header's value such as: form-data; name="title". Returns its parameters if it has that first word, and if all
// of it can be read in one way only.
std::optional<Parameters> ParametersOf(std::string_view text, std::string_view word) {
  SkipBlanks(text);
  const std::string_view first = text.substr(0, text.find_first_of("; \t"));
  if (!Equals(first, word)) return std::nullopt;
  text.remove_prefix(first.size());
  Parameters parameters;
  for (SkipBlanks(text); !text.empty(); SkipBlanks(text)) {
    if (text[0] != ';') return std::nullopt;
    text.remove_prefix(1);
    SkipBlanks(text);
    // Some clients end with a semicolon.
    if (text.empty()) break;
    const size_t equals = text.find('=');
    if (equals == text.npos) return std::nullopt;
    std::string name(text.substr(0, equals));
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    text.remove_prefix(equals + 1);
    std::optional<std::string> value = TakeValue(text);
    if (!value || !parameters.emplace(std::move(name), std::move(*value)).second) return std::nullopt;
  }
  return parameters;
}

// The value of the header, from lines that each end in a line end.
std::optional<std::string_view> FindHeader(std::string_view lines, std::string_view name) {
  while (!lines.empty()) {
    const std::string_view line = lines.substr(0, lines.find("\r\n"));
    lines.remove_prefix(std::min(lines.size(), line.size() + 2));
    const size_t colon = line.find(':');
    if (colon != line.npos && Equals(line.substr(0, colon), name)) return line.substr(colon + 1);
  }
  return std::nullopt;
}

}  // namespace

bool MultipartParser::Feed(const char* data, size_t size) {
  // Whatever follows the last boundary means nothing.
  if (IsComplete()) return true;
  buffer_.append(data, size);
  Step step = Step::kGoOn;
  while (step == Step::kGoOn && !IsComplete()) step = TakeStep();
  buffer_.erase(0, done_);
  done_ = 0;
  return step != Step::kFail;
}

MultipartParser::Step MultipartParser::TakeStep() {
  switch (state_) {
    case State::kDelimiter:
      return ReadDelimiterEnd();
    case State::kHead:
      return ReadHead();
    default:
      return FindDelimiter();
  }
}

// In the preamble and in a part: everything up to the next boundary.
MultipartParser::Step MultipartParser::FindDelimiter() {
  const size_t at = buffer_.find(delimiter_, done_);
  const bool found = at != buffer_.npos;
  // A boundary may have come in part.
  const size_t end = found ? at : std::max(done_, buffer_.size() - std::min(buffer_.size(), delimiter_.size() - 1));
  const size_t begin = done_;
  done_ = found ? at + delimiter_.size() : end;
  if (state_ == State::kData && end > begin && !append_(buffer_.data() + begin, end - begin)) return Step::kFail;
  if (found) state_ = State::kDelimiter;
  return found ? Step::kGoOn : Step::kNeedMore;
}

MultipartParser::Step MultipartParser::ReadDelimiterEnd() {
  const std::string_view rest = std::string_view(buffer_).substr(done_);
  if (rest.size() < 2) return Step::kNeedMore;
  if (rest.substr(0, 2) != "--" && rest.substr(0, 2) != "\r\n") return Step::kFail;
  // The line end stays, so that the head of a part always ends in two.
  state_ = rest[0] == '-' ? State::kEpilogue : State::kHead;
  return Step::kGoOn;
}

MultipartParser::Step MultipartParser::ReadHead() {
  const std::string_view rest = std::string_view(buffer_).substr(done_);
  const size_t end = rest.find("\r\n\r\n");
  if (std::min(end, rest.size()) > kMaxPartHeadBytes) return Step::kFail;
  if (end == rest.npos) return Step::kNeedMore;
  const auto disposition = FindHeader(rest.substr(0, end), "Content-Disposition");
  const auto parameters = disposition ? ParametersOf(*disposition, "form-data") : std::nullopt;
  if (!parameters || parameters->count("name") == 0) return Step::kFail;
  const auto file_name = parameters->find("filename");
  done_ += end + 4;
  state_ = State::kData;
  const bool wanted = begin_(parameters->at("name"), file_name == parameters->end() ? "" : file_name->second);
  return wanted ? Step::kGoOn : Step::kFail;
}

std::optional<std::string> BoundaryOf(std::string_view content_type) {
  const auto parameters = ParametersOf(content_type, "multipart/form-data");
  if (!parameters) return std::nullopt;
  const auto boundary = parameters->find("boundary");
  if (boundary == parameters->end()) return std::nullopt;
  if (boundary->second.empty() || boundary->second.size() > kMaxBoundaryBytes) return std::nullopt;
  return boundary->second;
}

}  // namespace orvane_service
