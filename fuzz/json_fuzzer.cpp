// Stops when the JSON parser disagrees with the plain one of the tests, or when what it has read does not survive
// copying, comparing and serializing.
#include "json.h"
#include "json_dump.h"
#include "json_reference_parser.h"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace {

/// Keeps the plain parser within its stack and its quadratic time.
constexpr size_t kLongestText = 4096;

std::string Outcome(json::Value (*parse)(const std::string&), const std::string& text) {
  try {
    return json_reference::Dump(parse(text));
  } catch (const std::out_of_range&) {
    return "out of range";
  }
}

void CheckUse(const std::string& text) {
  try {
    const json::Value value = json::Deserialize(text);
    const json::Value copy(value);
    if (json_reference::Dump(copy) != json_reference::Dump(value)) std::abort();
    if (json::Serialize(copy) != json::Serialize(value)) std::abort();
    // A NaN alone is unequal to itself, and the parser makes none.
    if (!(copy == value)) std::abort();
  } catch (const std::out_of_range&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  if (size > kLongestText) return -1;
  const std::string text(reinterpret_cast<const char*>(data), size);
  if (Outcome(json::Deserialize, text) != Outcome(json_reference::Deserialize, text)) std::abort();
  CheckUse(text);
  return 0;
}
