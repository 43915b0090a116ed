// Stops when the JSON parser disagrees with the plain one of the tests, or when what it has read does not survive
// copying, comparing and serializing.
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "json.h"
#include "json_reference_parser.h"

namespace {

// Keeps the plain parser within its stack and its quadratic time.
constexpr size_t kLongestText = 4096;

void CheckUse(const std::string& text) {
  try {
    const json::Value value = json::Deserialize(text);
    const json::Value copy(value);
    const std::string compact = json::Serialize(value);
    if (json::Serialize(copy) != compact) std::abort();
    // A NaN alone is unequal to itself.
    if (!(copy == value) && compact.find("nan") == std::string::npos) std::abort();
  } catch (const std::out_of_range&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  if (size > kLongestText) return -1;
  const std::string text(reinterpret_cast<const char*>(data), size);
  if (!json_reference::RealParserAgrees(text)) std::abort();
  CheckUse(text);
  return 0;
}
