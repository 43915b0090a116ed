#include "SinkServer.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <strings.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <thread>
#include <vector>

#include "FolderTree.h"
#include "Service.h"

namespace bench {

namespace {

/// What one read of a socket fetches at most. OpenSSL's own default is one record, 16 KiB, which would double the
/// number of system calls.
constexpr size_t kReadBytes = 256 * 1024;

/// How long the answer takes for the folders of the project "far".
constexpr std::chrono::milliseconds kFarDelay(5);

/// Bodies up to this length are kept, longer ones only counted.
constexpr long long kSmallBody = 64 * 1024;

void Check(bool worked, const char* what) {
  if (!worked) throw std::runtime_error(std::string("the sink cannot start: ") + what);
}

bool StartsWith(const std::string& text, const std::string& start) {
  return text.compare(0, start.size(), start) == 0;
}

/// The value of a header, or an empty string.
std::string Header(const std::string& head, const char* name) {
  const size_t length = std::char_traits<char>::length(name);
  size_t line = head.find("\r\n");
  while (line != std::string::npos && line + 2 < head.size()) {
    line += 2;
    const size_t end = head.find("\r\n", line);
    if (strncasecmp(head.c_str() + line, name, length) == 0 && head[line + length] == ':') {
      const size_t begin = head.find_first_not_of(' ', line + length + 1);
      return head.substr(begin, end - begin);
    }
    line = end;
  }
  return "";
}

bool Write(SSL* tls, const std::string& text) {
  return SSL_write(tls, text.data(), static_cast<int>(text.size())) > 0;
}

}  // namespace

struct SinkServer::Request {
  std::string method;
  std::string target;
  std::string head;
  /// What of the body has been read so far; only counted when it is long.
  std::string body;
  long long length = 0;
};

SinkServer::SinkServer(const std::string& authorityFile) : context_(nullptr, SSL_CTX_free) {
  MakeContext(authorityFile);
  Listen();
}

SinkServer::~SinkServer() {
  close(listener_);
}

void SinkServer::MakeContext(const std::string& authorityFile) {
  const std::filesystem::path file = authorityFile;
  orvane_service::CertificateAuthority authority(file.parent_path(), orvane_service::SystemTime);
  const orvane_service::Identity server = authority.ServerIdentity();
  std::filesystem::copy_file(authority.CertificateFile(), file);
  context_.reset(SSL_CTX_new(TLS_server_method()));
  Check(context_ != nullptr, "TLS");
  Check(SSL_CTX_use_certificate(context_.get(), server.certificate.get()) == 1, "certificate");
  Check(SSL_CTX_use_PrivateKey(context_.get(), server.key.get()) == 1, "private key");
  SSL_CTX_set_read_ahead(context_.get(), 1);
  SSL_CTX_set_default_read_buffer_len(context_.get(), kReadBytes);
}

void SinkServer::Listen() {
  listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  Check(listener_ >= 0 && bind(listener_, reinterpret_cast<sockaddr*>(&address), length) == 0 &&
            listen(listener_, 16) == 0 && getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length) == 0,
        "socket");
  port_ = ntohs(address.sin_port);
}

void SinkServer::Serve() {
  for (;;) {
    const int connection = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (connection >= 0) std::thread([this, connection] { ServeConnection(connection); }).detach();
  }
}

void SinkServer::ServeConnection(int socket) {
  const int on = 1;
  setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  const std::unique_ptr<SSL, void (*)(SSL*)> tls(SSL_new(context_.get()), SSL_free);
  SSL_set_fd(tls.get(), socket);
  bool counted = false;
  if (SSL_accept(tls.get()) == 1) {
    while (ServeRequest(tls.get(), counted)) {
    }
  }
  SSL_shutdown(tls.get());
  close(socket);
}

bool SinkServer::ServeRequest(SSL* tls, bool& counted) {
  Request request;
  if (!ReadHead(tls, request)) return false;
  if (request.target == "/statistics") {
    const std::string statistics = Statistics();
    return Write(tls,
                 "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(statistics.size()) + "\r\n\r\n" + statistics);
  }
  if (!counted) ++connections_;
  counted = true;
  if (!ReadBody(tls, request)) return false;
  ++requests_;
  bodyBytes_ += request.length;
  const std::string body = Answer(request);
  return Write(tls, std::string(body.empty() ? "HTTP/1.1 404 Not Found" : "HTTP/1.1 200 OK") +
                        "\r\nContent-Type: application/json\r\nContent-Length: " + std::to_string(body.size()) +
                        "\r\n\r\n" + body);
}

bool SinkServer::ReadHead(SSL* tls, Request& request) {
  std::vector<char> buffer(kSmallBody);
  std::string received;
  size_t end = std::string::npos;
  while (end == std::string::npos) {
    const int count = SSL_read(tls, buffer.data(), static_cast<int>(buffer.size()));
    if (count <= 0) return false;
    received.append(buffer.data(), static_cast<size_t>(count));
    end = received.find("\r\n\r\n");
  }
  request.head = received.substr(0, end + 2);
  request.body = received.substr(end + 4);
  const size_t space = request.head.find(' ');
  request.method = request.head.substr(0, space);
  request.target = request.head.substr(space + 1, request.head.find(' ', space + 1) - space - 1);
  const std::string length = Header(request.head, "Content-Length");
  request.length = length.empty() ? 0 : std::stoll(length);
  if (!Header(request.head, "Transfer-Encoding").empty()) {
    Write(tls, "HTTP/1.1 411 Length Required\r\nContent-Length: 0\r\n\r\n");
    return false;
  }
  return true;
}

bool SinkServer::ReadBody(SSL* tls, Request& request) {
  long long left = request.length - static_cast<long long>(request.body.size());
  if (left > 0 && !Header(request.head, "Expect").empty() && !Write(tls, "HTTP/1.1 100 Continue\r\n\r\n")) return false;
  std::vector<char> buffer(kReadBytes);
  const bool keep = request.length <= kSmallBody;
  while (left > 0) {
    const size_t wanted = static_cast<size_t>(std::min<long long>(left, static_cast<long long>(buffer.size())));
    const int count = SSL_read(tls, buffer.data(), static_cast<int>(wanted));
    if (count <= 0) return false;
    if (keep) request.body.append(buffer.data(), static_cast<size_t>(count));
    left -= count;
  }
  return true;
}

std::string SinkServer::Answer(const Request& request) const {
  const std::string api = "/api/prjacc/";
  if (request.target == api + "prjacc") {
    return request.method == "GET" ? R"({"root":{"status":"success","apiver":"3","auth_key":"key"}})"
                                   : R"({"root":{"status":"success","payload":{"token":"token"}}})";
  }
  if (request.target == api + "get_project_list") {
    return R"({"root":{"status":"success","payload":[{"id":"near","project_name":"Near"},)"
           R"({"id":"far","project_name":"Far"}]}})";
  }
  if (StartsWith(request.target, api + "get_folders/")) {
    if (request.target == api + "get_folders/far") std::this_thread::sleep_for(kFarDelay);
    const size_t at = request.body.find("&folder_id=");
    return FoldersInside(at == std::string::npos ? "" : request.body.substr(at + 11));
  }
  if (StartsWith(request.target, api + "upload_file/")) {
    return R"({"root":{"status":"success","payload":{"link":"https://acme.example/review/1"}}})";
  }
  return "";
}

std::string SinkServer::Statistics() const {
  return R"({"connections":)" + std::to_string(connections_) + R"(,"requests":)" + std::to_string(requests_) +
         R"(,"bodyBytes":)" + std::to_string(bodyBytes_) + "}";
}

}  // namespace bench
