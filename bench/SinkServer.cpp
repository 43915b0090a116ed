#include "SinkServer.h"

#include <chrono>
#include <memory>
#include <thread>

#include "Api.h"
#include "FolderTree.h"
#include "FormReader.h"

namespace bench {

namespace {

using orvane_service::Request;
using orvane_service::Response;

// How long the answer takes for the folders of the project "far".
constexpr std::chrono::milliseconds kFarDelay(5);

std::string Success(const std::string& members) {
  return R"({"root":{"status":"success",)" + members + "}}";
}

}  // namespace

class SinkServer::Visit : public orvane_service::Exchange {
 public:
  Visit(SinkServer& server, const Request& request)
      : server_(server),
        request_(request),
        form_(request, [this](const orvane_service::FormPiece& piece) { bytes_ += piece.size; }) {}

  void Receive(const char* data, size_t size) override {
    if (form_.IsForm()) return form_.Feed(data, size);
    body_.append(data, size);
    bytes_ += size;
  }

  Response Answer() override {
    const std::string path = request_.Path();
    if (path == "/statistics") return {200, server_.Statistics(), "text/plain"};
    server_.Count(request_.ClientPort(), bytes_);
    if (path == "/api/prjacc/prjacc") {
      return Json(
          Success(request_.method == "GET" ? R"("apiver":"3","auth_key":"key")" : R"("payload":{"token":"token"})"));
    }
    if (path == "/api/prjacc/get_project_list") {
      return Json(Success(R"("payload":[{"id":"near","project_name":"Near"},{"id":"far","project_name":"Far"}])"));
    }
    if (path.rfind("/api/prjacc/get_folders/", 0) == 0) {
      if (path == "/api/prjacc/get_folders/far") std::this_thread::sleep_for(kFarDelay);
      return Json(FoldersInside(orvane_service::ParseFields(body_)["folder_id"]));
    }
    return Json(Success(R"("payload":{"link":"https://acme.example/review/1"})"));
  }

 private:
  static Response Json(const std::string& text) { return {200, text, "application/json"}; }

  SinkServer& server_;
  const Request request_;
  orvane_service::FormReader form_;
  std::string body_;
  size_t bytes_ = 0;
};

SinkServer::SinkServer(const std::filesystem::path& folder)
    : authority_(folder), server_(authority_.MakeServerIdentity(), [this](const Request& request) {
        return std::make_unique<Visit>(*this, request);
      }) {
  server_.Start(0);
}

std::string SinkServer::Statistics() {
  const std::lock_guard<std::mutex> lock(mutex_);
  return std::to_string(connections_.size()) + ' ' + std::to_string(requests_) + ' ' + std::to_string(bodyBytes_);
}

void SinkServer::Count(int clientPort, size_t bodyBytes) {
  const std::lock_guard<std::mutex> lock(mutex_);
  connections_.insert(clientPort);
  ++requests_;
  bodyBytes_ += bodyBytes;
}

}  // namespace bench
