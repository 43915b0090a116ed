// Stops when what the JSON parser has read does not survive copying, comparing and serializing.
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "json.h"

// The serializer calls itself for each level.
constexpr size_t kLongestText = 4096;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  if (size > kLongestText) return -1;
  try {
    const json::Value value = json::Deserialize(std::string(reinterpret_cast<const char*>(data), size));
    const json::Value copy(value);
    const std::string compact = json::Serialize(value);
    if (json::Serialize(copy) != compact) std::abort();
    // A NaN alone is unequal to itself.
    if (!(copy == value) && compact.find("nan") == std::string::npos) std::abort();
  } catch (const std::out_of_range&) {
  }
  return 0;
}
