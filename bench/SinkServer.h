// The service that the benchmarks talk to: it answers at once and throws uploads away.
#pragma once

#include <atomic>
#include <filesystem>
#include <mutex>
#include <set>

#include "CertificateAuthority.h"
#include "HttpsServer.h"

namespace bench {

/// The review service's own web server with other handlers, on a free port. It logs everybody in, has two projects with
/// the folders of FolderTree.h, and takes every upload. It answers at once, but after 5 milliseconds, as from the next
/// town, when asked for folders of the project "far". GET /statistics answers a JSON object with the numbers of
/// "connections", "requests" and "bodyBytes" so far, which leave such questions out.
class SinkServer {
 public:
  /// Makes an authority, ca.pem, in the folder. Throws std::runtime_error.
  explicit SinkServer(const std::filesystem::path& folder);

  int port() const { return port_; }

 private:
  void AddLogin();
  void AddListings();
  void AddUpload();
  void AddStatistics();
  void Count(const httplib::Request& request, size_t bodyBytes);

  orvane_service::CertificateAuthority authority_;
  orvane_service::HttpsServer server_;
  int port_ = 0;
  std::mutex mutex_;
  // Guarded by the mutex. A connection is told by its client's port.
  std::set<int> connections_;
  long long requests_ = 0;
  size_t bodyBytes_ = 0;
};

}  // namespace bench
