#include "ScriptedServer.h"

#include <strings.h>

#include <algorithm>

#include "Service.h"
#include "TemporaryFolder.h"

namespace orvane_test {

namespace {

using orvane_service::CertificateAuthority;
using orvane_service::Identity;

constexpr const char* kContentType = "text/plain";

// Everything certificates, made once for the process.
struct Authority {
  static Authority& Get() {
    static Authority authority;
    return authority;
  }

  const TemporaryFolder folder;
  CertificateAuthority authority{folder / "known", orvane_service::SystemTime};
  const std::string file = authority.CertificateFile();
  const Identity server = authority.ServerIdentity();
};

Request HeadOf(const httplib::Request& arrived) {
  Request request;
  request.method = arrived.method;
  request.target = arrived.target;
  request.headers.insert(arrived.headers.begin(), arrived.headers.end());
  request.clientPort = arrived.remote_port;
  return request;
}

// Returns false when the body does not come as it was announced.
bool ReadBody(const httplib::ContentReader& read, bool isForm, Request& request) {
  const auto append = [](std::string& text, const char* bytes, size_t length) {
    text.append(bytes, length);
    return true;
  };
  if (!isForm) return read([&](const char* bytes, size_t length) { return append(request.body, bytes, length); });
  const auto addPart = [&](const httplib::MultipartFormData& part) {
    request.parts.push_back({part.name, part.filename, {}});
    return true;
  };
  return read(addPart,
              [&](const char* bytes, size_t length) { return append(request.parts.back().content, bytes, length); });
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

ScriptedServer::ScriptedServer()
    : others_([](const Request&) { return TextResponse("", 404); }),
      server_(std::make_unique<orvane_service::HttpsServer>(Authority::Get().server)) {
  const auto send = [this](const Response& response, httplib::Response& answer) {
    Pass(response.delay);
    answer.status = response.status;
    for (const auto& [name, value] : response.headers) answer.set_header(name, value);
    const size_t end = std::min(response.cutAfter, response.body.size());
    // Giving up is how a provider of content makes the library close the connection.
    if (response.chunkSize != 0) {
      answer.set_chunked_content_provider(kContentType, [=](size_t sent, httplib::DataSink& sink) {
        if (sent != 0 && !Pass(response.chunkDelay)) return false;
        if (sent < end) return sink.write(&response.body[sent], std::min(response.chunkSize, end - sent));
        if (end == response.body.size()) sink.done();
        return end == response.body.size();
      });
    } else if (end < response.body.size()) {
      answer.set_content_provider(response.body.size(), kContentType,
                                  [=](size_t sent, size_t, httplib::DataSink& sink) {
                                    return sent < end && sink.write(&response.body[sent], end - sent);
                                  });
    } else {
      answer.set_content(response.body, kContentType);
    }
  };
  server_->Get(
      ".*", [=](const httplib::Request& request, httplib::Response& answer) { send(Answer(HeadOf(request)), answer); });
  server_->Post(".*", [=](const httplib::Request& head, httplib::Response& answer, const httplib::ContentReader& read) {
    Request request = HeadOf(head);
    if (ReadBody(read, head.is_multipart_form_data(), request)) send(Answer(request), answer);
  });
  port_ = server_->Start(0);
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
