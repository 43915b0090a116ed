// Gives the local service's small parsers texts of libFuzzer's making. The first byte chooses the parser; what it has
// read must hold what its callers rely on.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "Customers.h"
#include "FileResponse.h"
#include "FormBody.h"
#include "HostNames.h"
#include "Html.h"
#include "MultipartParser.h"
#include "RequestHead.h"
#include "ReviewPages.h"
#include "Secrets.h"

namespace {

using namespace orvane_service;

void Require(bool holds) {
  if (!holds) std::abort();
}

void CheckRange(std::string_view text) {
  for (const uint64_t size : {uint64_t{0}, uint64_t{1}, uint64_t{1000}, UINT64_MAX}) {
    const RangeRequest request = ParseRange(text, size);
    if (request.kind != RangeKind::kPart) continue;
    const ByteRange& range = request.range;
    Require(range.length > 0 && range.offset < size && range.length <= size - range.offset);
  }
}

void CheckHead(std::string_view text) {
  try {
    const RequestHead head = ParseRequestHead(text);
    Require(head.target.find_first_of(" \r\n") == head.target.npos && head.target[0] == '/');
    Require(head.headers.count("Host") <= 1);
    Require(head.headers.count("Transfer-Encoding") + head.headers.count("Content-Length") <= 1);
    for (const auto& [name, value] : head.headers) {
      Require(!name.empty() && value.find_first_of(std::string_view("\r\n\0", 3)) == value.npos);
    }
  } catch (const BadHead& bad) {
    Require(bad.status >= 400 && bad.status < 600);
  }
}

void CheckForm(std::string_view text) {
  for (const auto& [name, value] : ParseFormBody(text)) Require(name.size() + value.size() <= text.size());
}

void CheckHost(std::string_view text) {
  const HostName host = ParseHost(text);
  Require((host.site == Site::kCustomer) == !host.subdomain.empty());
  Require(host.subdomain.find_first_of(".:ABCXYZ") == std::string::npos);
}

void CheckIds(std::string_view text) {
  const std::optional<int64_t> id = ParseId(std::string(text));
  Require(!id || *id > 0);
  if (IsIdentifier(text)) Require(text.find_first_of("/.") == text.npos);
}

void CheckChunkSize(std::string_view text) {
  const std::optional<uint64_t> size = ParseChunkSize(text);
  Require(!size || std::string_view("0123456789abcdefABCDEF").find(text[0]) != std::string_view::npos);
}

void CheckPage(std::string_view text) {
  Require(EscapeHtml(text).find_first_of("<>\"'") == std::string::npos);
  ContentTypeOf(std::string(text));
}

std::string ReadForm(std::string_view form, size_t piece) {
  std::string parts;
  MultipartParser parser(
      "b",
      [&](const std::string& name, const std::string& file_name) {
        parts += "<" + name + "|" + file_name + ">";
        return true;
      },
      [&](const char* data, size_t size) {
        parts.append(data, size);
        return true;
      });
  for (; !form.empty(); form.remove_prefix(std::min(piece, form.size()))) {
    if (!parser.Feed(form.data(), std::min(piece, form.size()))) return "malformed";
  }
  return parser.IsComplete() ? parts : "malformed";
}

// A form in pieces of any size is read as it is in one piece. The first byte is the size.
void CheckPieces(std::string_view text) {
  if (text.empty()) return;
  const std::string_view form = text.substr(1);
  const size_t piece = static_cast<unsigned char>(text[0]) + size_t{1};
  Require(ReadForm(form, piece) == ReadForm(form, form.size() + 1));
}

void CheckBoundary(std::string_view text) {
  const auto boundary = BoundaryOf(text);
  Require(!boundary || (!boundary->empty() && boundary->size() <= kMaxBoundaryBytes));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  constexpr void (*checks[])(std::string_view) = {CheckRange,     CheckHead, CheckForm,   CheckHost,    CheckIds,
                                                  CheckChunkSize, CheckPage, CheckPieces, CheckBoundary};
  if (size == 0) return 0;
  const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
  checks[data[0] % std::size(checks)](text);
  return 0;
}
