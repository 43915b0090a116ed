#include "SinkServer.h"

#include <chrono>
#include <thread>

#include "FolderTree.h"
#include "Service.h"

namespace bench {

namespace {

using httplib::Request;
using httplib::Response;

const char* const kJson = "application/json";

// How long the answer takes for the folders of the project "far".
constexpr std::chrono::milliseconds kFarDelay(5);

// More than a listing has, which must not be interrupted by a new connection.
constexpr size_t kRequestsOfAConnection = 1000000;

std::string Success(const std::string& members) {
  return R"({"root":{"status":"success",)" + members + "}}";
}

}  // namespace

SinkServer::SinkServer(const std::filesystem::path& folder)
    : authority_(folder, orvane_service::SystemTime), server_(authority_.ServerIdentity()) {
  AddLogin();
  AddListings();
  AddUpload();
  AddStatistics();
  server_.set_keep_alive_max_count(kRequestsOfAConnection);
  port_ = server_.Start(0);
}

void SinkServer::AddLogin() {
  server_.Get("/api/prjacc/prjacc", [this](const Request& request, Response& response) {
    Count(request, 0);
    response.set_content(Success(R"("apiver":"3","auth_key":"key")"), kJson);
  });
  server_.Post("/api/prjacc/prjacc", [this](const Request& request, Response& response) {
    Count(request, request.body.size());
    response.set_content(Success(R"("payload":{"token":"token"})"), kJson);
  });
}

void SinkServer::AddListings() {
  server_.Post("/api/prjacc/get_project_list", [this](const Request& request, Response& response) {
    Count(request, request.body.size());
    response.set_content(
        Success(R"("payload":[{"id":"near","project_name":"Near"},{"id":"far","project_name":"Far"}])"), kJson);
  });
  server_.Post("/api/prjacc/get_folders/(.*)", [this](const Request& request, Response& response) {
    Count(request, request.body.size());
    if (request.matches[1] == "far") std::this_thread::sleep_for(kFarDelay);
    response.set_content(FoldersInside(request.get_param_value("folder_id")), kJson);
  });
}

void SinkServer::AddUpload() {
  server_.Post("/api/prjacc/upload_file/.*",
               [this](const Request& request, Response& response, const httplib::ContentReader& reader) {
                 size_t bytes = 0;
                 reader([](const httplib::MultipartFormData&) { return true; },
                        [&bytes](const char*, size_t size) {
                          bytes += size;
                          return true;
                        });
                 Count(request, bytes);
                 response.set_content(Success(R"("payload":{"link":"https://acme.example/review/1"})"), kJson);
               });
}

void SinkServer::AddStatistics() {
  server_.Get("/statistics", [this](const Request&, Response& response) {
    const std::lock_guard<std::mutex> lock(mutex_);
    response.set_content(R"({"connections":)" + std::to_string(connections_.size()) + R"(,"requests":)" +
                             std::to_string(requests_) + R"(,"bodyBytes":)" + std::to_string(bodyBytes_) + "}",
                         kJson);
  });
}

void SinkServer::Count(const Request& request, size_t bodyBytes) {
  const std::lock_guard<std::mutex> lock(mutex_);
  connections_.insert(request.remote_port);
  ++requests_;
  bodyBytes_ += bodyBytes;
}

}  // namespace bench
