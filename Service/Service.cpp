#include "Service.h"

#include <ctime>

#include "Answers.h"
#include "DemoData.h"
#include "Html.h"
#include "Secrets.h"

namespace orvane_service {
namespace {

using httplib::Request;
using httplib::Response;

// The paths of the calls after the login, under either version of the API. A group of its own for the version would
// shift the group of the project's id.
const std::string kBase = "(?:/v3)?/api/prjacc";

// Far more than any call but an upload sends. The library keeps such a body in memory.
constexpr uint64_t kMaxSmallBody = 64 * 1024;

bool IsUpload(const Request& request) {
  const std::string call = "/api/prjacc/upload_file/";
  return request.method == "POST" && (request.path.rfind(call, 0) == 0 || request.path.rfind("/v3" + call, 0) == 0);
}

bool IsApiPath(const std::string& path) {
  return path.rfind("/api/", 0) == 0 || path.rfind("/v3/", 0) == 0;
}

// Runs a call of the API and turns what it refuses into an answer.
template <typename Call>
void Guard(Response& response, const Call& call) {
  try {
    call();
  } catch (const Refusal& refusal) {
    AnswerRefusal(response, refusal);
  }
}

}  // namespace

int64_t SystemTime() {
  return time(nullptr);
}

Service::Service(ServiceOptions options)
    : options_(std::move(options)),
      folder_(options_.data),
      authority_(folder_.Path() / "ca", options_.clock),
      database_(folder_.Path() / "orvane.db"),
      catalog_(database_),
      sessions_(database_, options_.clock),
      gate_(options_.passwords),
      files_(folder_.Path()),
      unproven_(options_.free_bytes ? options_.free_bytes : [this] { return files_.FreeBytes(); }),
      api_(catalog_, sessions_, gate_),
      upload_(catalog_, sessions_, files_, unproven_, options_.clock, options_.refuse_uploads),
      pages_(catalog_, files_),
      web_site_(options_.web_version, folder_.Path() / "downloads"),
      server_(authority_.ServerIdentity(), options_.server) {
  if (catalog_.IsEmpty()) Seed();
  ReportStrayFiles();
  AddApiHandlers();
  AddUploadHandler();
  AddPageHandlers();
  AddBodyLimit();
  AddErrorHandlers();
}

Service::~Service() {
  Stop();
}

void Service::Start() {
  // Known before the first client is served: the links of uploads name it.
  port_ = server_.Bind(options_.port);
  server_.Listen();
}

void Service::Stop() {
  gate_.Stop();
  server_.Stop();
}

void Service::Seed() {
  demo_password_ = options_.demo_password.value_or(RandomHex(8));
  AddDemoData(database_, *demo_password_);
}

void Service::ReportStrayFiles() {
  // A crash between moving a file and recording it leaves one. It may be the only copy of somebody's work, so it is
  // reported, not removed.
  for (const std::string& id : files_.Ids()) {
    if (!catalog_.HasFile(id)) Log("no record of the file " + files_.PathOf(id).string());
  }
}

void Service::AddApiHandlers() {
  const auto call = [this](void (Api::*method)(const Request&, Response&)) {
    return [this, method](const Request& request, Response& response) {
      Guard(response, [&] { (api_.*method)(request, response); });
    };
  };
  // The login is the same for all: a client learns from it which version to use.
  server_.Get("/api/prjacc/prjacc", call(&Api::OpenSession));
  server_.Post("/api/prjacc/prjacc", call(&Api::LogIn));
  server_.Post(kBase + "/get_project_list", call(&Api::ListProjects));
  server_.Post(kBase + "/get_folders/(.*)", call(&Api::ListFolders));
}

void Service::AddUploadHandler() {
  // This must match whatever IsUpload() does, line ends in the path included: the body of a request without a handler
  // of this kind is read into memory.
  server_.Post(kBase + "/upload_file/([^]*)",
               [this](const Request& request, Response& response, const httplib::ContentReader& reader) {
                 Guard(response, [&] { upload_.Receive(request, response, reader, port_); });
               });
  server_.SetRequestHook([](Request& request) {
    if (!IsUpload(request)) return;
    const std::string type = request.get_header_value("Content-Type");
    request.headers.erase("Content-Type");
    request.headers.erase(kUploadType);
    request.headers.emplace(kUploadType, type);
  });
  server_.set_expect_100_continue_handler(
      [this](const Request& request, Response& response) { return CheckExpectation(request, response); });
}

int Service::CheckExpectation(const Request& request, Response& response) {
  response.status = 100;
  if (IsUpload(request)) Guard(response, [&] { upload_.CheckHeaders(request); });
  const int status = response.status;
  // The answer that follows the body has a status of its own.
  if (status == 100) response.status = -1;
  return status;
}

void Service::AddPageHandlers() {
  server_.Get("/review/([^/]*)",
              [this](const Request& request, Response& response) { pages_.ShowPage(request, response); });
  server_.Get("/review/([^/]*)/file",
              [this](const Request& request, Response& response) { pages_.SendContent(request, response); });
  server_.Get("/", [this](const Request& request, Response& response) { web_site_.ShowFrontPage(request, response); });
  server_.Get("/downloads/vorrel-premiere/version\\.txt",
              [this](const Request& request, Response& response) { web_site_.SendVersion(request, response); });
  server_.Get("/downloads/vorrel-premiere/orvane-vorrel-APP\\.dmg",
              [this](const Request& request, Response& response) { web_site_.SendInstaller(request, response); });
}

void Service::AddBodyLimit() {
  server_.set_pre_routing_handler([](const Request& request, Response& response) {
    const bool has_body = request.method != "GET" && request.method != "HEAD" && request.method != "OPTIONS";
    const bool has_length = request.has_header("Content-Length");
    const bool too_long = request.get_header_value<uint64_t>("Content-Length") > kMaxSmallBody;
    if (request.has_header("Content-Encoding")) {
      // A few bytes could unpack to any size.
      AnswerRefusal(response, {415, "Compressed requests are not accepted."});
    } else if (!IsUpload(request) && has_body && !has_length) {
      // In chunks it could go on for ever.
      AnswerRefusal(response, {411, "The request must tell its length."});
    } else if (!IsUpload(request) && too_long) {
      AnswerRefusal(response, {413, "The request is too large."});
    } else {
      return httplib::Server::HandlerResponse::Unhandled;
    }
    return httplib::Server::HandlerResponse::Handled;
  });
}

void Service::AddErrorHandlers() {
  // For errors of the library, and for paths that nobody handles. Answers of the handlers have a body already.
  server_.set_error_handler(httplib::Server::Handler([](const Request& request, Response& response) {
    if (!response.body.empty()) return;
    if (IsApiPath(request.path)) {
      const bool not_found = response.status == 404;
      AnswerRefusal(response,
                    {response.status, not_found ? "The API has no such call." : "The request cannot be read."});
    } else if (response.status == 404) {
      SendNotFound(response);
    }
  }));
  server_.set_exception_handler([this](const Request& request, Response& response, std::exception_ptr pointer) {
    std::string what = "unknown";
    try {
      std::rethrow_exception(pointer);
    } catch (const std::exception& exception) {
      what = exception.what();
    } catch (...) {
      // Nothing more is known about it.
    }
    Log("fault: " + what);
    const Refusal refusal{500, "The service has a fault. Please try again later."};
    if (IsApiPath(request.path)) return AnswerRefusal(response, refusal);
    SendPage(response, 500, "Fault", "<p>" + EscapeHtml(refusal.message) + "</p>\n");
  });
  server_.SetFaultLog([this](const std::string& what) { Log("fault: " + what); });
  server_.set_logger([this](const Request& request, const Response& response) {
    const std::string path = request.target.substr(0, request.target.find('?'));
    Log(request.method + " " + request.get_header_value("Host") + " " + path + " " + std::to_string(response.status));
  });
}

void Service::Log(const std::string& line) {
  if (!options_.log) return;
  std::lock_guard<std::mutex> lock(log_mutex_);
  options_.log(line);
}

}  // namespace orvane_service
