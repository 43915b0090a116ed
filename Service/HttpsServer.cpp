#include "HttpsServer.h"

#include <arpa/inet.h>
#include <strings.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <new>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <thread>

namespace orvane_service {
namespace {

constexpr unsigned int kThreads = 4;
// For a request's head, and for what is read of its body at a time.
constexpr size_t kConnectionBytes = 32 * 1024;

std::string ReadText(const std::filesystem::path& file) {
  std::ifstream stream(file);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// The client is told at once, even if it is stuck because nobody takes what it sends: an orderly end would wait behind
// that.
void Reset(int socket) {
  sockaddr nobody{};
  nobody.sa_family = AF_UNSPEC;
  static_cast<void>(connect(socket, &nobody, sizeof(nobody)));
}

void SetPatience(MHD_Connection* connection, std::chrono::seconds time) {
  MHD_set_connection_option(connection, MHD_CONNECTION_OPTION_TIMEOUT, static_cast<unsigned int>(time.count()));
}

}  // namespace

std::string Request::Header(const char* name) const {
  const char* value = MHD_lookup_connection_value(connection, MHD_HEADER_KIND, name);
  return value == nullptr ? std::string() : value;
}

int Request::ClientPort() const {
  const auto* info = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CLIENT_ADDRESS);
  return ntohs(reinterpret_cast<const sockaddr_in*>(info->client_addr)->sin_port);
}

Response::Response(int answer_status, const std::string& body, const std::string& type)
    : Response(answer_status,
               MHD_create_response_from_buffer(body.size(), const_cast<char*>(body.data()), MHD_RESPMEM_MUST_COPY)) {
  SetHeader("Content-Type", type);
}

Response::Response(int answer_status, MHD_Response* made) : status(answer_status), content(made, MHD_destroy_response) {
  if (made == nullptr) throw std::bad_alloc();
}

void Response::SetHeader(const std::string& name, const std::string& value) {
  MHD_add_response_header(content.get(), name.c_str(), value.c_str());
}

// One request. Its functions are called on the connection's thread, but for Exchange::Answer().
struct HttpsServer::Call {
  ~Call() {
    if (thread.joinable()) thread.join();
  }

  MHD_Connection* const connection;
  std::string target;
  std::unique_ptr<Exchange> exchange;
  std::thread thread;
  // Set by that thread unless it fails.
  std::optional<Response> response;
};

HttpsServer::HttpsServer(Identity identity, Opener open, const ServerLimits& limits,
                         std::function<void(const std::string&)> log)
    : identity_(std::move(identity)), open_(std::move(open)), limits_(limits), log_(std::move(log)) {}

HttpsServer::~HttpsServer() {
  Stop();
}

void HttpsServer::Start(int port) {
  const std::string certificate = ReadText(identity_.certificate);
  const std::string key = ReadText(identity_.key);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  // The links of uploads name it, and a client may come before this function returns.
  port_ = port;
  errno = 0;
  daemon_ = MHD_start_daemon(MHD_USE_POLL_INTERNAL_THREAD | MHD_USE_TLS | MHD_ALLOW_SUSPEND_RESUME, 0, nullptr, nullptr,
                             &OnRequest, this, MHD_OPTION_SOCK_ADDR, &address, MHD_OPTION_HTTPS_MEM_CERT,
                             certificate.c_str(), MHD_OPTION_HTTPS_MEM_KEY, key.c_str(), MHD_OPTION_HTTPS_PRIORITIES,
                             "NORMAL:-VERS-ALL:+VERS-TLS1.3:+VERS-TLS1.2", MHD_OPTION_THREAD_POOL_SIZE, kThreads,
                             MHD_OPTION_CONNECTION_LIMIT, limits_.connections, MHD_OPTION_CONNECTION_TIMEOUT,
                             static_cast<unsigned int>(limits_.first.count()), MHD_OPTION_CONNECTION_MEMORY_LIMIT,
                             kConnectionBytes, MHD_OPTION_STRICT_FOR_CLIENT, 1, MHD_OPTION_URI_LOG_CALLBACK, &OnTarget,
                             this, MHD_OPTION_NOTIFY_COMPLETED, &OnEnd, this, MHD_OPTION_NOTIFY_CONNECTION,
                             &OnConnection, this, MHD_OPTION_END);
  if (daemon_ == nullptr) {
    throw std::runtime_error("port " + std::to_string(port) + " is in use or not allowed: " + strerror(errno));
  }
  port_ = MHD_get_daemon_info(daemon_, MHD_DAEMON_INFO_BIND_PORT)->port;
}

void HttpsServer::Stop() {
  if (daemon_ == nullptr) return;
  const int listener = MHD_quiesce_daemon(daemon_);
  {
    std::unique_lock<std::mutex> lock(mutex_);
    stopping_ = true;
    for (const int socket : sockets_) Reset(socket);
    answered_.wait(lock, [this] { return answering_ == 0; });
  }
  MHD_stop_daemon(daemon_);
  daemon_ = nullptr;
  close(listener);
}

void* HttpsServer::OnTarget(void*, const char* target, MHD_Connection* connection) {
  return new Call{connection, target, nullptr, {}, {}};
}

MHD_Result HttpsServer::OnRequest(void* server, MHD_Connection*, const char*, const char* method, const char*,
                                  const char* data, size_t* size, void** call) {
  auto* const self = static_cast<HttpsServer*>(server);
  try {
    return self->Advance(*static_cast<Call*>(*call), method, data, size);
  } catch (...) {
    self->Report(std::current_exception());
    return MHD_NO;
  }
}

void HttpsServer::OnEnd(void* server, MHD_Connection* connection, void** call, MHD_RequestTerminationCode) {
  delete static_cast<Call*>(*call);
  *call = nullptr;
  SetPatience(connection, static_cast<HttpsServer*>(server)->limits_.first);
}

void HttpsServer::OnConnection(void* server, MHD_Connection* connection, void**, MHD_ConnectionNotificationCode what) {
  auto* const self = static_cast<HttpsServer*>(server);
  const int socket = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD)->connect_fd;
  std::lock_guard<std::mutex> lock(self->mutex_);
  if (what == MHD_CONNECTION_NOTIFY_STARTED) {
    self->sockets_.insert(socket);
  } else {
    self->sockets_.erase(socket);
  }
}

// Called when the head has come, then for each piece of the body, and then until there is an answer.
MHD_Result HttpsServer::Advance(Call& call, const char* method, const char* data, size_t* size) {
  const auto send = [&call](const Response& response) {
    return MHD_queue_response(call.connection, static_cast<unsigned int>(response.status), response.content.get());
  };
  if (!call.exchange) {
    SetPatience(call.connection, limits_.idle);
    const Request request{call.connection, method, std::move(call.target)};
    call.exchange = open_(request);
    const bool asks = strcasecmp(request.Header("Expect").c_str(), "100-continue") == 0;
    return asks && !call.exchange->WantsBody() ? send(call.exchange->Answer()) : MHD_YES;
  }
  if (*size > 0) {
    call.exchange->Receive(data, *size);
    *size = 0;
    return MHD_YES;
  }
  if (call.thread.joinable()) {
    call.thread.join();
    return call.response ? send(*call.response) : MHD_NO;
  }
  return call.exchange->MayWait() ? AnswerApart(call) : send(call.exchange->Answer());
}

MHD_Result HttpsServer::AnswerApart(Call& call) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    if (stopping_) return MHD_NO;
    ++answering_;
  }
  const auto resume = [this, &call] {
    MHD_resume_connection(call.connection);
    std::lock_guard<std::mutex> lock(mutex_);
    --answering_;
    answered_.notify_all();
  };
  MHD_suspend_connection(call.connection);
  try {
    call.thread = std::thread([this, &call, resume] {
      try {
        call.response = call.exchange->Answer();
      } catch (...) {
        Report(std::current_exception());
      }
      resume();
    });
  } catch (const std::system_error&) {
    // There are too many threads now; it is tried again at once.
    resume();
  }
  return MHD_YES;
}

void HttpsServer::Report(const std::exception_ptr& fault) const {
  if (!log_) return;
  try {
    std::rethrow_exception(fault);
  } catch (const std::exception& exception) {
    log_(exception.what());
  } catch (...) {
    log_("unknown");
  }
}

}  // namespace orvane_service
