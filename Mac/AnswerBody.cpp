#include "AnswerBody.h"

std::streamsize AnswerBody::Buffer::xsputn(const char* bytes, std::streamsize count) {
  const size_t length = static_cast<size_t>(count);
  if (length > limit - text.size()) return 0;
  text.append(bytes, length);
  return count;
}
