#include "MultipartForm.h"

#include <stdexcept>

namespace orvane_test {

namespace {

constexpr const char* kLineEnd = "\r\n";

/// What stands between the first begin and the next end, or an empty string.
std::string Between(const std::string& text, const std::string& begin, const std::string& end) {
  const size_t at = text.find(begin);
  if (at == std::string::npos) return std::string();
  const size_t from = at + begin.size();
  return text.substr(from, text.find(end, from) - from);
}

FormPart ParsePart(const std::string& text) {
  const size_t headersEnd = text.find("\r\n\r\n");
  if (headersEnd == std::string::npos) throw std::runtime_error("a form part has no end of headers");
  const std::string headers = text.substr(0, headersEnd) + kLineEnd;
  FormPart part;
  part.name = Between(headers, "; name=\"", "\"");
  part.fileName = Between(headers, "; filename=\"", "\"");
  part.contentType = Between(headers, "Content-Type: ", kLineEnd);
  part.content = text.substr(headersEnd + 4);
  return part;
}

}  // namespace

std::vector<FormPart> ParseMultipartForm(const Request& request) {
  const std::string boundary = Between(request.Header("content-type") + kLineEnd, "boundary=", kLineEnd);
  if (boundary.empty()) throw std::runtime_error("the request has no form boundary");
  const std::string delimiter = std::string(kLineEnd) + "--" + boundary;
  // The first delimiter lacks the line end that belongs to the others.
  const std::string body = kLineEnd + request.body;
  if (body.compare(0, delimiter.size(), delimiter) != 0) throw std::runtime_error("the form has no first boundary");
  std::vector<FormPart> parts;
  size_t begin = delimiter.size();
  while (body.compare(begin, 2, "--") != 0) {
    const size_t end = body.find(delimiter, begin);
    if (end == std::string::npos) throw std::runtime_error("the form has no last boundary");
    parts.push_back(ParsePart(body.substr(begin + 2, end - begin - 2)));
    begin = end + delimiter.size();
  }
  return parts;
}

}  // namespace orvane_test
