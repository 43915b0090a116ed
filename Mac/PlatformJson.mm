#import "PlatformJson.h"

#include <cstring>

namespace {

// Whether the text keeps to both limits. It is looked at as far as strings and brackets go; whether it is JSON is the
// reader's business.
bool IsWithinLimits(const char *text, size_t length) {
  size_t depth = 0;
  size_t values = 1;
  bool in_string = false;
  bool opened = false;  // the last character beside white space was an opening bracket
  for (size_t i = 0; i < length && depth <= kMaxJsonDepth && values <= kMaxJsonValues; ++i) {
    const char character = text[i];
    if (!in_string && (character == ' ' || (character >= '\t' && character <= '\r'))) continue;
    const bool closes = character == ']' || character == '}';
    if (opened && !closes) ++values;
    opened = false;
    if (in_string) {
      if (character == '\\') ++i;
      if (character == '"') in_string = false;
    } else if (character == '"') {
      in_string = true;
    } else if (character == '[' || character == '{') {
      ++depth;
      opened = true;
    } else if (closes) {
      if (depth > 0) --depth;
    } else if (character == ',') {
      ++values;
    }
  }
  return depth <= kMaxJsonDepth && values <= kMaxJsonValues;
}

}  // namespace

id ParseJson(const void *bytes, size_t length, NSJSONReadingOptions options) {
  // A zero byte would turn the look at the strings round: some readers take texts in UTF-16 and UTF-32, too.
  if (length == 0 || memchr(bytes, 0, length) || !IsWithinLimits(static_cast<const char *>(bytes), length)) return nil;
  NSData *data = [NSData dataWithBytesNoCopy:const_cast<void *>(bytes) length:length freeWhenDone:NO];
  return [NSJSONSerialization JSONObjectWithData:data options:options error:NULL];
}
