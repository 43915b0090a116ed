#include "RequestHead.h"

#include <strings.h>

#include <algorithm>
#include <array>
#include <charconv>

namespace orvane_service {
namespace {

bool IsTokenCharacter(char c) {
  const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  return letter || (c >= '0' && c <= '9') ||
         (c != '\0' && std::string_view("!#$%&'*+-.^_`|~").find(c) != std::string_view::npos);
}

bool IsToken(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), IsTokenCharacter);
}

bool IsControl(char c) {
  return (c >= 0 && c < ' ') || c == 0x7f;
}

std::string_view Trim(std::string_view text) {
  const auto is_blank = [](char c) { return c == ' ' || c == '\t'; };
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_blank(text.back())) text.remove_suffix(1);
  return text;
}

bool Equals(std::string_view a, std::string_view b) {
  return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

// Takes the next line off the text.
std::string_view TakeLine(std::string_view& text) {
  const size_t end = text.find("\r\n");
  if (end == text.npos) throw BadHead{400};
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end + 2);
  return line;
}

// Returns whether the request is of HTTP/1.0.
bool ReadRequestLine(std::string_view line, RequestHead& head) {
  const size_t first = line.find(' ');
  const size_t last = line.rfind(' ');
  if (first == last) throw BadHead{400};
  const std::string_view method = line.substr(0, first);
  const std::string_view target = line.substr(first + 1, last - first - 1);
  const std::string_view version = line.substr(last + 1);
  if (target.size() > kMaxTargetBytes) throw BadHead{414};
  const bool bad_target =
      std::any_of(target.begin(), target.end(), [](char c) { return c == ' ' || c == '#' || IsControl(c); });
  if (!IsToken(method) || target.empty() || target[0] != '/' || bad_target) throw BadHead{400};
  if (version.size() != 8 || version.substr(0, 5) != "HTTP/") throw BadHead{400};
  if (version != "HTTP/1.1" && version != "HTTP/1.0") throw BadHead{505};
  constexpr std::array<std::string_view, 7> known = {"GET", "HEAD", "POST", "PUT", "DELETE", "OPTIONS", "PATCH"};
  if (std::find(known.begin(), known.end(), method) == known.end()) throw BadHead{501};
  head.method = method;
  head.target = target;
  return version == "HTTP/1.0";
}

void ReadField(std::string_view line, RequestHead& head) {
  const size_t colon = line.find(':');
  // A line that begins with a blank would continue the one before: nobody may send that any more.
  if (colon == line.npos || !IsToken(line.substr(0, colon))) throw BadHead{400};
  const std::string_view value = Trim(line.substr(colon + 1));
  if (std::any_of(value.begin(), value.end(), [](char c) { return IsControl(c) && c != '\t'; })) throw BadHead{400};
  head.headers.emplace(line.substr(0, colon), value);
}

uint64_t ReadLength(const std::string& text) {
  uint64_t length = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
  if (error == std::errc::result_out_of_range) throw BadHead{413};
  if (error != std::errc() || end != text.data() + text.size()) throw BadHead{400};
  return length;
}

// How the end of the body is found. Two ways at once would let a request hide in the body of another.
void ReadFraming(RequestHead& head, bool is_old) {
  const size_t codings = head.headers.count("Transfer-Encoding");
  const size_t lengths = head.headers.count("Content-Length");
  if (codings + lengths > 1 || (codings > 0 && is_old)) throw BadHead{400};
  if (codings > 0) {
    if (!Equals(head.headers.find("Transfer-Encoding")->second, "chunked")) throw BadHead{501};
    head.chunked = true;
  }
  if (lengths > 0) head.length = ReadLength(head.headers.find("Content-Length")->second);
}

bool HasOption(const RequestHead& head, std::string_view wanted) {
  const auto [begin, end] = head.headers.equal_range("Connection");
  for (auto field = begin; field != end; ++field) {
    for (std::string_view rest = field->second; !rest.empty();) {
      const std::string_view option = rest.substr(0, rest.find(','));
      rest.remove_prefix(std::min(rest.size(), option.size() + 1));
      if (Equals(Trim(option), wanted)) return true;
    }
  }
  return false;
}

}  // namespace

RequestHead ParseRequestHead(std::string_view text) {
  RequestHead head;
  const bool is_old = ReadRequestLine(TakeLine(text), head);
  for (std::string_view line = TakeLine(text); !line.empty(); line = TakeLine(text)) ReadField(line, head);
  const size_t hosts = head.headers.count("Host");
  if (hosts > 1 || (hosts == 0 && !is_old)) throw BadHead{400};
  ReadFraming(head, is_old);
  head.close = HasOption(head, "close") || (is_old && !HasOption(head, "keep-alive"));
  return head;
}

std::optional<uint64_t> ParseChunkSize(std::string_view line) {
  uint64_t size = 0;
  const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), size, 16);
  if (error != std::errc()) return std::nullopt;
  const std::string_view extensions = Trim(line.substr(static_cast<size_t>(end - line.data())));
  if (!extensions.empty() && extensions[0] != ';') return std::nullopt;
  if (std::any_of(extensions.begin(), extensions.end(), [](char c) { return IsControl(c) && c != '\t'; })) {
    return std::nullopt;
  }
  return size;
}

}  // namespace orvane_service
