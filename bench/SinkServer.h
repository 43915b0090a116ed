// The service that the benchmarks talk to: it answers at once and throws uploads away.
#pragma once

#include <filesystem>
#include <mutex>
#include <set>
#include <string>

#include "CertificateAuthority.h"
#include "HttpsServer.h"

namespace bench {

/// The review service's own web server with other answers, on a free port. It logs everybody in, has two projects with
/// the folders of FolderTree.h, and takes every upload. It answers at once, but after 5 milliseconds, as from the next
/// town, when asked for folders of the project "far". GET /statistics answers the numbers of connections, of
/// requests and of their bodies' bytes so far, which leave such questions out.
class SinkServer {
 public:
  /// Makes an authority, ca.pem, in the folder. Throws std::runtime_error.
  explicit SinkServer(const std::filesystem::path& folder);

  int port() const { return server_.Port(); }

 private:
  class Visit;

  std::string Statistics();
  void Count(int clientPort, size_t bodyBytes);

  orvane_service::CertificateAuthority authority_;
  std::mutex mutex_;
  // Guarded by the mutex. A connection is told by its client's port.
  std::set<int> connections_;
  long long requests_ = 0;
  size_t bodyBytes_ = 0;
  orvane_service::HttpsServer server_;
};

}  // namespace bench
