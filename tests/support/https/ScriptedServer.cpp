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
  }

  void Receive(const char* data, size_t size) override {
    if (form_.IsForm()) return form_.Feed(data, size);
    request_.body.append(data, size);
  }

  bool MayWait() const override { return true; }

  orvane_service::Response Answer() override {
    if (form_.IsForm() && !form_.End()) throw std::runtime_error("a malformed form");
    response_ = server_.Answer(request_);
    orvane_service::Response answer(
        response_.status, MHD_create_response_from_callback(response_.body.size(), kBlockBytes, &Read, this, nullptr));
    answer.SetHeader("Content-Type", "text/plain");
    for (const auto& [name, value] : response_.headers) answer.SetHeader(name, value);
    return answer;
  }

 private:
  void AddPiece(const orvane_service::FormPiece& piece) {
    if (piece.begins) request_.parts.push_back({piece.name, piece.file_name == nullptr ? "" : piece.file_name, {}});
    request_.parts.back().content.append(piece.data, piece.size);
  }

  // More of the body, as the library asks for it.
  static ssize_t Read(void* visit, uint64_t offset, char* place, size_t size) {
    return static_cast<Visit*>(visit)->Next(static_cast<size_t>(offset), place, size);
  }

  ssize_t Next(size_t sent, char* place, size_t size) const {
    const size_t end = std::min(response_.cutAfter, response_.body.size());
    if (sent == end) {
      return end == response_.body.size() ? MHD_CONTENT_READER_END_OF_STREAM : MHD_CONTENT_READER_END_WITH_ERROR;
    }
    return static_cast<ssize_t>(response_.body.copy(place, std::min(size, end - sent), sent));
  }

  ScriptedServer& server_;
  Request request_;
  Response response_;
  orvane_service::FormReader form_;
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

const std::string& ScriptedServer::AuthorityFile() {
  return Authority::Get().file;
}

}  // namespace orvane_test
