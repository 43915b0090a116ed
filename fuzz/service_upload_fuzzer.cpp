// Sends the local service a connection of libFuzzer's making, as bytes without TLS: the head of an upload, its form,
// and whatever follows. Stops when a form gets past its limits, or when a file holds what was not sent.
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>

#include "MultipartParser.h"
#include "RequestStream.h"
#include "UploadForm.h"

namespace {

using namespace orvane_service;

// Where the library does not look for a form.
constexpr const char* kType = "Upload-Type";

// What the client sends; what it is answered is dropped.
class Bytes : public httplib::Stream {
 public:
  explicit Bytes(std::string_view text) : text_(text) {}

  bool is_readable() const override { return true; }
  bool is_writable() const override { return true; }
  ssize_t read(char* data, size_t size) override {
    const size_t count = text_.copy(data, size);
    text_.remove_prefix(count);
    return static_cast<ssize_t>(count);
  }
  ssize_t write(const char*, size_t size) override { return static_cast<ssize_t>(size); }
  void get_remote_ip_and_port(std::string&, int&) const override {}
  void get_local_ip_and_port(std::string&, int&) const override {}
  socket_t socket() const override { return 0; }

 private:
  std::string_view text_;
};

void Require(bool holds) {
  if (!holds) std::abort();
}

// The folder of one run; removed at its end.
struct Folder {
  Folder() : path(std::filesystem::temp_directory_path() / ("service_upload_fuzzer." + std::to_string(getpid()))) {}
  ~Folder() { std::filesystem::remove_all(path); }

  const std::filesystem::path path;
};

class UploadServer : public httplib::Server {
 public:
  UploadServer() {
    Post("/([^]*)", [this](const httplib::Request& request, httplib::Response&, const httplib::ContentReader& reader) {
      const auto boundary = BoundaryOf(request.get_header_value(kType));
      if (boundary) Receive(request, *boundary, reader);
    });
  }

  void Serve(std::string_view text) {
    sent_ = text;
    Bytes bytes(text);
    RequestStream stream(bytes);
    try {
      if (!stream.ReadHead()) return;
    } catch (const BadHead&) {
      return;
    }
    bool closed = false;
    process_request(stream, true, closed, [&](httplib::Request& request) {
      stream.FillIn(request);
      const std::string type = request.get_header_value("Content-Type");
      request.headers.erase("Content-Type");
      request.headers.emplace(kType, type);
    });
  }

 private:
  void Receive(const httplib::Request& request, const std::string& boundary, const httplib::ContentReader& reader) {
    const auto ticket = uploads_.Admit();
    Require(ticket != nullptr);
    const auto check = [](const std::string& key, const std::string& token) { return key == token; };
    UploadForm form(store_, *ticket, request.get_header_value<uint64_t>("Content-Length"), check);
    std::string file;
    bool in_file = false;
    MultipartParser parser(
        boundary,
        [&](const std::string& name, const std::string& file_name) {
          in_file = name == "Filedata";
          return form.BeginPart(name, file_name);
        },
        [&](const char* data, size_t size) {
          if (in_file) file.append(data, size);
          return form.Append(data, size);
        });
    const bool complete = reader([&](const char* bytes, size_t size) { return parser.Feed(bytes, size); });
    if (!complete || !parser.IsComplete() || form.GetRefusal()) {
      return Require(!form.GetRefusal() || form.File() == nullptr);
    }
    Require(form.Tags().size() <= kMaxTags && form.Text("title").value_or("").size() <= kMaxTextBytes);
    if (form.File() == nullptr) return;
    Require(form.File()->Size() == file.size() && file.size() <= sent_.size());
    // Chunks may stand between.
    if (request.has_header("Content-Length")) Require(sent_.find(file) != sent_.npos);
  }

  Folder folder_;
  FileStore store_{folder_.path};
  UnprovenUploads uploads_{[] { return uint64_t{1} << 40; }};
  std::string_view sent_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  static UploadServer server;
  server.Serve({reinterpret_cast<const char*>(data), size});
  return 0;
}
