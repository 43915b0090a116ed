#include "Utf16.h"

#include <glib.h>

#include <algorithm>

namespace orvane_host {

std::optional<std::string> ReadUtf16(const prUTF16Char* text, size_t units) {
  const prUTF16Char* end = std::find(text, text + units, prUTF16Char{0});
  if (end == text + units) return std::nullopt;
  g_autofree gchar* converted = g_utf16_to_utf8(text, end - text, nullptr, nullptr, nullptr);
  if (!converted) return std::nullopt;
  return converted;
}

}  // namespace orvane_host
