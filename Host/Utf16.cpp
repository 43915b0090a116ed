#include "Utf16.h"

#include <iconv.h>

#include <algorithm>

namespace orvane_host {

std::optional<std::string> ReadUtf16(const prUTF16Char* text, size_t units) {
  const prUTF16Char* end = std::find(text, text + units, prUTF16Char{0});
  if (end == text + units) return std::nullopt;

  iconv_t converter = iconv_open("UTF-8", "UTF-16LE");
  if (converter == reinterpret_cast<iconv_t>(-1)) return std::nullopt;
  std::string result(static_cast<size_t>(end - text) * 3, '\0');  // a unit becomes three bytes at most
  char* in = reinterpret_cast<char*>(const_cast<prUTF16Char*>(text));
  size_t in_left = static_cast<size_t>(end - text) * sizeof(prUTF16Char);
  char* out = result.data();
  size_t out_left = result.size();
  const size_t status = iconv(converter, &in, &in_left, &out, &out_left);
  iconv_close(converter);
  if (status == static_cast<size_t>(-1)) return std::nullopt;
  result.resize(result.size() - out_left);
  return result;
}

}  // namespace orvane_host
