#include "HttpsServer.h"

#include "Certificates.h"
#include "Deployment.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <openssl/ssl.h>
#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <list>
#include <map>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace orvane_test {

namespace {

/// Thrown to end a connection that the client has closed or that the server's end closes.
struct ConnectionEnd {};

std::string WithoutPort(const std::string& host) {
  return host.substr(0, host.find(':'));
}

/// Everything certificates, made once for the process.
class Authority {
 public:
  static Authority& Get() {
    static Authority authority;
    return authority;
  }

  const std::string& file() const { return file_; }

  const Identity& identity(ServerCertificate certificate) const {
    if (certificate == ServerCertificate::kTrusted) return trusted_;
    return certificate == ServerCertificate::kWrongName ? wrongName_ : unknownAuthority_;
  }

 private:
  Authority() {
    std::string folder = (std::filesystem::temp_directory_path() / "orvane-https-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) throw std::runtime_error("cannot make a temporary folder");
    folder_ = folder;
    file_ = folder_ / "authority.pem";
    std::ofstream(file_) << ToPem(authority_);
  }
  ~Authority() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  const std::vector<std::string> names_ = {"*." + WithoutPort(ORVANE_SERVICE_DOMAIN), WithoutPort(ORVANE_WEB_HOST)};
  const Identity authority_ = MakeAuthority("Test authority");
  const Identity trusted_ = IssueCertificate(authority_, names_);
  const Identity wrongName_ = IssueCertificate(authority_, {"elsewhere.invalid"});
  const Identity unknownAuthority_ = IssueCertificate(MakeAuthority("Unknown authority"), names_);
  std::filesystem::path folder_;
  std::string file_;
};

/// Reads and writes the text of one connection.
class Channel {
 public:
  Channel(SSL_CTX* context, int socket) : ssl_(SSL_new(context), SSL_free) {
    // Head and body of an answer are written one after the other: neither shall wait for the other's arrival.
    const int on = 1;
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    SSL_set_fd(ssl_.get(), socket);
    if (SSL_accept(ssl_.get()) != 1) throw ConnectionEnd();
  }

  /// The next line without its end.
  std::string ReadLine() {
    size_t end;
    while ((end = buffer_.find("\r\n")) == std::string::npos) Fill();
    std::string line = buffer_.substr(0, end);
    buffer_.erase(0, end + 2);
    return line;
  }

  std::string Read(size_t length) {
    while (buffer_.size() < length) Fill();
    std::string bytes = buffer_.substr(0, length);
    buffer_.erase(0, length);
    return bytes;
  }

  void Write(const std::string& bytes) {
    size_t written = 0;
    if (!bytes.empty() && SSL_write_ex(ssl_.get(), bytes.data(), bytes.size(), &written) != 1) throw ConnectionEnd();
  }

 private:
  void Fill() {
    char bytes[16384];
    size_t length = 0;
    if (SSL_read_ex(ssl_.get(), bytes, sizeof bytes, &length) != 1) throw ConnectionEnd();
    buffer_.append(bytes, length);
  }

  const std::unique_ptr<SSL, void (*)(SSL*)> ssl_;
  std::string buffer_;
};

std::string ReadChunks(Channel& channel) {
  std::string body;
  while (true) {
    const size_t length = std::stoul(channel.ReadLine(), nullptr, 16);
    body += channel.Read(length);
    channel.ReadLine();
    if (length == 0) return body;
  }
}

Request ReadRequest(Channel& channel) {
  Request request;
  const std::string line = channel.ReadLine();
  const size_t methodEnd = line.find(' ');
  const size_t targetEnd = line.rfind(' ');
  if (methodEnd == std::string::npos || targetEnd == methodEnd) throw ConnectionEnd();
  request.method = line.substr(0, methodEnd);
  request.target = line.substr(methodEnd + 1, targetEnd - methodEnd - 1);
  for (std::string header = channel.ReadLine(); !header.empty(); header = channel.ReadLine()) {
    const size_t colon = header.find(':');
    if (colon == std::string::npos) throw ConnectionEnd();
    std::string name = header.substr(0, colon);
    for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    const size_t value = header.find_first_not_of(' ', colon + 1);
    request.headers.emplace_back(name, value == std::string::npos ? "" : header.substr(value));
  }
  if (!request.Header("expect").empty()) channel.Write("HTTP/1.1 100 Continue\r\n\r\n");
  if (request.Header("transfer-encoding") == "chunked") {
    request.body = ReadChunks(channel);
  } else if (!request.Header("content-length").empty()) {
    request.body = channel.Read(std::stoul(request.Header("content-length")));
  }
  return request;
}

std::string Head(const Response& response) {
  std::string head = "HTTP/1.1 " + std::to_string(response.status) + " Status\r\n";
  for (const auto& [name, value] : response.headers) head += name + ": " + value + "\r\n";
  if (response.chunkSize != 0) return head + "Transfer-Encoding: chunked\r\n\r\n";
  return head + "Content-Length: " + std::to_string(response.body.size()) + "\r\n\r\n";
}

std::string Chunk(const std::string& bytes) {
  char length[32];
  std::snprintf(length, sizeof length, "%zx\r\n", bytes.size());
  return length + bytes + "\r\n";
}

}  // namespace

class HttpsServer::Implementation {
 public:
  explicit Implementation(ServerCertificate certificate) : context_(SSL_CTX_new(TLS_server_method()), SSL_CTX_free) {
    const Identity& identity = Authority::Get().identity(certificate);
    SSL_CTX_use_certificate(context_.get(), identity.certificate.get());
    SSL_CTX_use_PrivateKey(context_.get(), identity.key.get());
    Listen();
    acceptor_ = std::thread([this] { Accept(); });
  }

  ~Implementation() {
    {
      std::lock_guard<std::mutex> lock(mutex_);
      stopping_ = true;
      for (const Connection& connection : connections_) {
        if (connection.socket >= 0) shutdown(connection.socket, SHUT_RDWR);
      }
    }
    changed_.notify_all();
    // Wakes the accepting thread, which makes no more connections after that.
    shutdown(listener_, SHUT_RDWR);
    acceptor_.join();
    for (Connection& connection : connections_) connection.thread.join();
    close(listener_);
  }

  void Route(const std::string& target, Handler handler) {
    std::lock_guard<std::mutex> lock(mutex_);
    routes_[target] = std::move(handler);
  }

  void RouteOthers(Handler handler) {
    std::lock_guard<std::mutex> lock(mutex_);
    others_ = std::move(handler);
  }

  std::vector<Request> Requests() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return requests_;
  }

  bool WaitForRequests(size_t count, std::chrono::milliseconds deadline) const {
    std::unique_lock<std::mutex> lock(mutex_);
    return changed_.wait_for(lock, deadline, [&] { return requests_.size() >= count; });
  }

  int ConnectionCount() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return static_cast<int>(connections_.size());
  }

  int port() const { return port_; }

 private:
  struct Connection {
    int socket;  ///< -1 once it is closed
    std::thread thread;
  };

  void Listen() {
    listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (listener_ < 0 || bind(listener_, generic, length) != 0 || listen(listener_, SOMAXCONN) != 0 ||
        getsockname(listener_, generic, &length) != 0) {
      throw std::runtime_error("the test server cannot listen");
    }
    port_ = ntohs(address.sin_port);
  }

  void Accept() {
    while (true) {
      const int socket = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
      std::lock_guard<std::mutex> lock(mutex_);
      if (stopping_ || socket < 0) {
        if (socket >= 0) close(socket);
        if (stopping_) return;
        continue;
      }
      connections_.push_back({socket, std::thread()});
      Connection& connection = connections_.back();
      const int number = static_cast<int>(connections_.size());
      connection.thread = std::thread([this, &connection, number] { Serve(connection, number); });
    }
  }

  void Serve(Connection& connection, int number) {
    // A client may close while an answer is written to it.
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    try {
      Channel channel(context_.get(), connection.socket);
      while (true) Answer(channel, number);
    } catch (const ConnectionEnd&) {
    } catch (const std::exception&) {
      // A request that makes no sense: the connection ends here, and the test finds its request missing.
    }
    std::lock_guard<std::mutex> lock(mutex_);
    close(connection.socket);
    connection.socket = -1;
  }

  void Answer(Channel& channel, int number) {
    Request request = ReadRequest(channel);
    request.connection = number;
    Handler handler;
    {
      std::lock_guard<std::mutex> lock(mutex_);
      requests_.push_back(request);
      const auto route = routes_.find(request.target);
      handler = route == routes_.end() ? others_ : route->second;
    }
    changed_.notify_all();
    Send(channel, handler(request));
  }

  void Send(Channel& channel, const Response& response) {
    Pass(response.delay);
    channel.Write(Head(response));
    const size_t length = std::min(response.cutAfter, response.body.size());
    if (response.chunkSize == 0) {
      channel.Write(response.body.substr(0, length));
    } else {
      for (size_t sent = 0; sent < length; sent += response.chunkSize) {
        if (sent != 0) Pass(response.chunkDelay);
        channel.Write(Chunk(response.body.substr(sent, std::min(response.chunkSize, length - sent))));
      }
    }
    if (response.cutAfter != Response::kWhole) throw ConnectionEnd();
    if (response.chunkSize != 0) channel.Write(Chunk(std::string()));
  }

  /// Lets the time pass, less of it when the server is to end.
  void Pass(std::chrono::milliseconds time) {
    if (time.count() == 0) return;
    std::unique_lock<std::mutex> lock(mutex_);
    if (changed_.wait_for(lock, time, [this] { return stopping_; })) throw ConnectionEnd();
  }

  const std::unique_ptr<SSL_CTX, void (*)(SSL_CTX*)> context_;
  int listener_ = -1;
  int port_ = 0;
  std::thread acceptor_;

  mutable std::mutex mutex_;
  mutable std::condition_variable changed_;
  // Guarded by the mutex from here on.
  bool stopping_ = false;
  std::list<Connection> connections_;
  std::map<std::string, Handler> routes_;
  Handler others_ = [](const Request&) { return TextResponse("", 404); };
  std::vector<Request> requests_;
};

std::string Request::Header(const std::string& name) const {
  for (const auto& header : headers) {
    if (header.first == name) return header.second;
  }
  return std::string();
}

Response TextResponse(std::string body, int status) {
  Response response;
  response.status = status;
  response.body = std::move(body);
  return response;
}

HttpsServer::HttpsServer(ServerCertificate certificate)
    : implementation_(std::make_unique<Implementation>(certificate)) {}

HttpsServer::~HttpsServer() = default;

void HttpsServer::Route(const std::string& target, Handler handler) {
  implementation_->Route(target, std::move(handler));
}

void HttpsServer::Route(const std::string& target, Response response) {
  Route(target, [response](const Request&) { return response; });
}

void HttpsServer::RouteOthers(Handler handler) {
  implementation_->RouteOthers(std::move(handler));
}

std::vector<Request> HttpsServer::Requests() const {
  return implementation_->Requests();
}

bool HttpsServer::WaitForRequests(size_t count, std::chrono::milliseconds deadline) const {
  return implementation_->WaitForRequests(count, deadline);
}

int HttpsServer::ConnectionCount() const {
  return implementation_->ConnectionCount();
}

int HttpsServer::port() const {
  return implementation_->port();
}

const std::string& HttpsServer::AuthorityFile() {
  return Authority::Get().file();
}

}  // namespace orvane_test
