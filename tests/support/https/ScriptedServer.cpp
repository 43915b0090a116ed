#include "ScriptedServer.h"

#include <strings.h>

#include <algorithm>
#include <stdexcept>

#include "FormReader.h"
#include "Service.h"
#include "TemporaryFolder.h"

namespace orvane_test {

namespace {

using orvane_service::CertificateAuthority;
using orvane_service::Identity;

constexpr const char* kContentType = "text/plain";
constexpr size_t kBlockBytes = 16 * 1024;

// Everything certificates, made once for the process.
struct Authority {
  static Authority& Get() {
    static Authority authority;
    return authority;
  }

  const TemporaryFolder folder;
  CertificateAuthority authority{folder / "known"};
  const std::string file = authority.Files().certificate;
  const Identity server = authority.MakeServerIdentity();
};

MHD_Result AddHeader(void* headers, MHD_ValueKind, const char* name, const char* value) {
  static_cast<std::multimap<std::string, std::string>*>(headers)->emplace(name, value == nullptr ? "" : value);
  return MHD_YES;
}

// The body of an answer that is cut off or comes in pieces, as the library asks for it.
struct Script {
  static ssize_t Read(void* script, uint64_t sent, char* place, size_t size) {
    return static_cast<Script*>(script)->Next(static_cast<size_t>(sent), place, size);
  }
  static void Free(void* script) { delete static_cast<Script*>(script); }

  ssize_t Next(size_t sent, char* place, size_t size) const {
    const size_t end = std::min(response.cutAfter, response.body.size());
    if (sent > 0 && !pass(response.chunkDelay)) return MHD_CONTENT_READER_END_WITH_ERROR;
    if (sent == end) {
      return end == response.body.size() ? MHD_CONTENT_READER_END_OF_STREAM : MHD_CONTENT_READER_END_WITH_ERROR;
    }
    const size_t chunk = response.chunkSize == 0 ? size : std::min(size, response.chunkSize);
    return static_cast<ssize_t>(response.body.copy(place, std::min(chunk, end - sent), sent));
  }

  const Response response;
  const std::function<bool(std::chrono::milliseconds)> pass;
};

}  // namespace

std::string Request::Header(const std::string& name) const {
  for (const auto& header : headers) {
    if (strcasecmp(header.first.c_str(), name.c_str()) == 0) return header.second;
  }
  return std::string();
}

Response TextResponse(std::string body, int status) {
  Response response;
  response.status = status;
  response.body = std::move(body);
  return response;
}

class ScriptedServer::Visit : public orvane_service::Exchange {
 public:
  Visit(ScriptedServer& server, const orvane_service::Request& head)
      : server_(server), form_(head, [this](const orvane_service::FormPiece& piece) { AddPiece(piece); }) {
    request_.method = head.method;
    request_.target = head.target;
    request_.clientPort = head.ClientPort();
    MHD_get_connection_values(head.connection, MHD_HEADER_KIND, &AddHeader, &request_.headers);
    isForm_ = form_.IsForm();
  }

  void Receive(const char* data, size_t size) override {
    if (isForm_) {
      form_.Feed(data, size);
    } else {
      request_.body.append(data, size);
    }
  }

  bool MayWait() const override { return true; }

  orvane_service::Response Answer() override {
    if (isForm_ && !form_.End()) throw std::runtime_error("a malformed form");
    const Response response = server_.Answer(request_);
    server_.Pass(response.delay);
    orvane_service::Response answer = Content(response);
    for (const auto& [name, value] : response.headers) answer.SetHeader(name, value);
    return answer;
  }

 private:
  void AddPiece(const orvane_service::FormPiece& piece) {
    if (piece.begins) request_.parts.push_back({piece.name, piece.file_name == nullptr ? "" : piece.file_name, {}});
    request_.parts.back().content.append(piece.data, piece.size);
  }

  orvane_service::Response Content(const Response& response) {
    if (response.chunkSize == 0 && response.cutAfter >= response.body.size()) {
      return {response.status, response.body, kContentType};
    }
    const uint64_t size = response.chunkSize == 0 ? response.body.size() : MHD_SIZE_UNKNOWN;
    auto* const script = new Script{response, [this_server = &server_](auto time) { return this_server->Pass(time); }};
    return {response.status,
            MHD_create_response_from_callback(size, kBlockBytes, &Script::Read, script, &Script::Free)};
  }

  ScriptedServer& server_;
  Request request_;
  orvane_service::FormReader form_;
  bool isForm_ = false;
};

ScriptedServer::ScriptedServer()
    : others_([](const Request&) { return TextResponse("", 404); }),
      server_(std::make_unique<orvane_service::HttpsServer>(
          Authority::Get().server,
          [this](const orvane_service::Request& head) { return std::make_unique<Visit>(*this, head); })) {
  server_->Start(0);
  port_ = server_->Port();
}

ScriptedServer::~ScriptedServer() {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    stopping_ = true;
  }
  stop_.notify_all();
  server_->Stop();
}

void ScriptedServer::Route(const std::string& target, Handler handler) {
  std::lock_guard<std::mutex> lock(mutex_);
  routes_[target] = std::move(handler);
}

void ScriptedServer::Route(const std::string& target, Response response) {
  Route(target, [response](const Request&) { return response; });
}

void ScriptedServer::RouteOthers(Handler handler) {
  std::lock_guard<std::mutex> lock(mutex_);
  others_ = std::move(handler);
}

std::vector<Request> ScriptedServer::Requests() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return requests_;
}

Response ScriptedServer::Answer(const Request& request) {
  Handler handler;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    requests_.push_back(request);
    const auto route = routes_.find(request.target);
    handler = route == routes_.end() ? others_ : route->second;
  }
  return handler(request);
}

bool ScriptedServer::Pass(std::chrono::milliseconds time) {
  std::unique_lock<std::mutex> lock(mutex_);
  return !stop_.wait_for(lock, time, [this] { return stopping_; });
}

const std::string& ScriptedServer::AuthorityFile() {
  return Authority::Get().file;
}

}  // namespace orvane_test
