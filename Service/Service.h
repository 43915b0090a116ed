// The whole service: one data folder, one HTTPS server.
#pragma once

#include <exception>
#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "Api.h"
#include "Catalog.h"
#include "CertificateAuthority.h"
#include "DataFolder.h"
#include "Database.h"
#include "FileStore.h"
#include "HttpsServer.h"
#include "ReviewPages.h"
#include "Sessions.h"
#include "Upload.h"
#include "WebSite.h"

namespace orvane_service {

/// Port of a service that is not told otherwise; the plug-in is built for it.
constexpr int kDefaultPort = 48443;

/// Seconds since 1970 by the system's clock.
int64_t SystemTime();

struct ServiceOptions {
  std::filesystem::path data;
  /// 0 for any free port.
  int port = kDefaultPort;
  /// Password of the demo user when the data folder is new; random if not given.
  std::optional<std::string> demo_password;
  /// What the web site gives as the plug-in's newest version; if not given, what its downloads folder says.
  std::optional<std::string> web_version;
  /// If given, every upload is refused with this message.
  std::optional<std::string> refuse_uploads;
  Clock clock = SystemTime;
  /// What a client may ask of the service's patience; tests have less of it.
  ServerLimits server;
  /// Free space on the disk of the data folder, in bytes; if not given, the system is asked.
  std::function<uint64_t()> free_bytes;
  /// Takes a line for each request and each fault, without a line end; no secrets are in it. Called on any thread, one
  /// call at a time. May be empty.
  std::function<void(const std::string&)> log;
};

class Service {
 public:
  /// Opens the data folder, or fills a new one with the demo data. Throws std::exception with a message for the user.
  explicit Service(ServiceOptions options);

  /// Stops if it runs.
  ~Service();

  /// Begins to listen. Throws std::runtime_error if the port is in use.
  void Start();

  /// Cuts all connections and returns when nothing runs any more.
  void Stop();

  /// The port in use. Valid after Start().
  int Port() const { return server_.Port(); }

  const std::filesystem::path& Data() const { return folder_.Path(); }

  /// The certificate that clients trust, and its key.
  const std::filesystem::path& AuthorityFile() const { return authority_.Files().certificate; }
  const std::filesystem::path& AuthorityKey() const { return authority_.Files().key; }

  /// The demo user's password if the data folder was new.
  const std::optional<std::string>& DemoPassword() const { return demo_password_; }

 private:
  class Visit;

  Response Route(const Request& request, const std::string& body);
  Response Told(const Request& request, const std::exception_ptr& thrown);
  void Log(std::string line);

  ServiceOptions options_;
  DataFolder folder_;
  CertificateAuthority authority_;
  Database database_;
  Catalog catalog_;
  Sessions sessions_;
  FileStore files_;
  Api api_;
  Upload upload_;
  ReviewPages pages_;
  WebSite web_site_;
  std::optional<std::string> demo_password_;
  std::mutex log_mutex_;
  // Last, so that it stops before anything that its exchanges use goes away.
  HttpsServer server_;
};

}  // namespace orvane_service
