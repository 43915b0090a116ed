#include "Service.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <stdexcept>
#include <system_error>

#include "Answers.h"
#include "Customers.h"
#include "DemoData.h"
#include "Html.h"
#include "Secrets.h"

namespace orvane_service {
namespace {

const std::string kLogin = "/api/prjacc/prjacc";

// Far more than any call but an upload sends.
constexpr size_t kMaxSmallBody = 64 * 1024;

// The part of the path behind this beginning, or nothing if it has another.
std::optional<std::string> Behind(const std::string& path, const std::string& beginning) {
  if (path.rfind(beginning, 0) != 0) return std::nullopt;
  return path.substr(beginning.size());
}

bool IsApiPath(const std::string& path) {
  return Behind(path, "/api/") || Behind(path, "/v3/");
}

// A call behind the login, under either version of the API; the calls look whether it is the customer's.
std::optional<std::string> CallIn(const Request& request, const std::string& call) {
  if (request.method != "POST") return std::nullopt;
  const std::string path = request.Path();
  const auto argument = Behind(path, "/api/prjacc/" + call);
  return argument ? argument : Behind(path, "/v3/api/prjacc/" + call);
}

}  // namespace

int64_t SystemTime() {
  return time(nullptr);
}

// A request and what has come of it. What is thrown on the way becomes its answer when all of it has come.
class Service::Visit : public Exchange {
 public:
  Visit(Service& service, Request request)
      : service_(service), request_(std::move(request)), project_(CallIn(request_, "upload_file/")) {
    if (project_) Keep([this] { form_ = service_.upload_.Begin(request_); });
  }

  bool WantsBody() const override { return !thrown_; }

  // To check a password, and to wait for the disk.
  bool MayWait() const override { return form_ || request_.Path() == kLogin; }

  void Receive(const char* data, size_t size) override {
    received_ += size;
    if (received_ > kMaxUploadBytes) throw std::runtime_error("a request without end");
    if (thrown_) return;
    Keep([&] {
      if (form_) return form_->Feed(data, size);
      if (received_ > kMaxSmallBody) throw Refusal{413, "The request is too large."};
      body_.append(data, size);
    });
  }

  Response Answer() override {
    std::optional<Response> response;
    if (!thrown_) {
      Keep([&] {
        response = form_ ? service_.upload_.Finish(request_, *project_, *form_, service_.Port())
                         : service_.Route(request_, body_);
      });
    }
    if (!response) response = service_.Told(request_, thrown_);
    service_.Log(request_.method + " " + request_.Header("Host") + " " + request_.Path() + " " +
                 std::to_string(response->status));
    return std::move(*response);
  }

 private:
  void Keep(const std::function<void()>& step) {
    try {
      step();
    } catch (...) {
      thrown_ = std::current_exception();
      // The space is free again at once, however long the client goes on sending.
      form_.reset();
    }
  }

  Service& service_;
  const Request request_;
  // Of an upload.
  const std::optional<std::string> project_;
  std::unique_ptr<UploadForm> form_;
  // Of any other call.
  std::string body_;
  uint64_t received_ = 0;
  std::exception_ptr thrown_;
};

Service::Service(ServiceOptions options)
    : options_(std::move(options)),
      folder_(options_.data),
      authority_(folder_.Path() / "ca"),
      database_(folder_.Path() / "orvane.db"),
      catalog_(database_),
      sessions_(database_, options_.clock),
      files_(folder_.Path(), options_.free_bytes),
      api_(catalog_, sessions_),
      upload_(catalog_, sessions_, files_, options_.clock, options_.refuse_uploads),
      pages_(catalog_, files_),
      web_site_(options_.web_version, folder_.Path() / "downloads"),
      server_(
          authority_.MakeServerIdentity(),
          [this](const Request& request) { return std::make_unique<Visit>(*this, request); }, options_.server,
          [this](const std::string& fault) { Log("fault: " + fault); }) {
  if (catalog_.IsEmpty()) {
    demo_password_ = options_.demo_password.value_or(RandomHex(8));
    AddDemoData(database_, *demo_password_);
  }
  // A crash between moving a file and recording it leaves one. It may be the only copy of somebody's work, so it is
  // reported, not removed.
  for (const auto& entry : std::filesystem::directory_iterator(folder_.Path() / "files")) {
    if (!catalog_.HasFile(entry.path().filename())) Log("no record of the file " + entry.path().string());
  }
}

Service::~Service() {
  Stop();
}

void Service::Start() {
  server_.Start(options_.port);
}

void Service::Stop() {
  api_.Stop();
  server_.Stop();
}

Response Service::Route(const Request& request, const std::string& body) {
  const std::string path = request.Path();
  const bool gets = request.method == "GET" || request.method == "HEAD";
  // The login is the same for all: a client learns from it which version to use.
  if (path == kLogin && gets) return api_.OpenSession(request);
  if (path == kLogin && request.method == "POST") return api_.LogIn(request, body);
  if (CallIn(request, "get_project_list") == "") return api_.ListProjects(request, body);
  if (const auto project = CallIn(request, "get_folders/")) return api_.ListFolders(request, body, *project);
  if (IsApiPath(path)) throw Refusal{404, "The API has no such call."};
  if (!gets) return NotFoundPage();
  if (ParseHost(request.Header("Host")) == "www") {
    if (path == "/") return web_site_.FrontPage();
    if (const auto file = Behind(path, "/downloads/")) return web_site_.Download(request, *file);
  }
  if (const auto review = Behind(path, "/review/")) {
    const size_t slash = review->find('/');
    const std::string id = review->substr(0, slash);
    if (slash == std::string::npos) return pages_.ShowPage(request, id);
    if (review->substr(slash) == "/file") return pages_.SendContent(request, id);
  }
  return NotFoundPage();
}

Response Service::Told(const Request& request, const std::exception_ptr& thrown) {
  Refusal refusal{500, "The service has a fault. Please try again later."};
  try {
    std::rethrow_exception(thrown);
  } catch (const Refusal& known) {
    refusal = known;
  } catch (const std::system_error& error) {
    Log(std::string("fault: ") + error.what());
    if (error.code().value() == ENOSPC) refusal = NoRoom();
  } catch (const std::exception& exception) {
    Log(std::string("fault: ") + exception.what());
  }
  if (IsApiPath(request.Path())) return RefusalAnswer(refusal);
  return Page(refusal.status, "Not possible", "<p>" + EscapeHtml(refusal.message) + "</p>\n");
}

void Service::Log(std::string line) {
  if (!options_.log) return;
  // Nothing that a client sends may look like another line, or steer a terminal.
  std::replace_if(
      line.begin(), line.end(), [](unsigned char c) { return c < ' ' || c == 0x7f; }, '?');
  std::lock_guard<std::mutex> lock(log_mutex_);
  options_.log(line);
}

}  // namespace orvane_service
