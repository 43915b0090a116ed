// Gives the local service's own small parsers texts of libFuzzer's making. The first byte chooses the parser; what it
// has read must hold what its callers rely on.
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <string>

#include "Api.h"
#include "Customers.h"
#include "FileResponse.h"
#include "Html.h"

namespace {

using namespace orvane_service;

void Require(bool holds) {
  if (!holds) std::abort();
}

void CheckRange(const std::string& text) {
  for (const uint64_t size : {uint64_t{0}, uint64_t{1}, uint64_t{1000}, UINT64_MAX}) {
    const auto range = ParseRange(text, size);
    Require(!range || (range->offset <= size && range->length <= size - range->offset));
  }
}

void CheckHost(const std::string& text) {
  const std::optional<std::string> label = ParseHost(text);
  Require(!label || (!label->empty() && label->find_first_of(".:ABCXYZ") == label->npos));
}

void CheckFields(const std::string& text) {
  for (const auto& [name, value] : ParseFields(text)) Require(name.size() + value.size() <= text.size());
}

void CheckText(const std::string& text) {
  Require(EscapeHtml(text).find_first_of("<>\"'") == std::string::npos);
}

void CheckIds(const std::string& text) {
  const std::optional<int64_t> id = ParseId(text);
  Require(!id || *id > 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  constexpr void (*checks[])(const std::string&) = {CheckRange, CheckHost, CheckFields, CheckText, CheckIds};
  if (size > 0) checks[data[0] % std::size(checks)]({reinterpret_cast<const char*>(data) + 1, size - 1});
  return 0;
}
