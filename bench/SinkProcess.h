// The benchmarks' service, started for this program.
#pragma once

#include <string>

#include "ChildProcess.h"

namespace bench {

/// What the service has counted since it started.
struct SinkStatistics {
  long long connections = 0;
  long long requests = 0;
  long long bodyBytes = 0;
};

/// While it lives, the service runs in a process of its own, and all transfers of this process go there and trust it.
/// One at a time; main thread. The handle that asks for statistics must not be used while another transfer runs.
class SinkProcess {
 public:
  /// The folder is for the authority's certificate. Throws std::runtime_error when the service does not start.
  explicit SinkProcess(const std::string& folder);
  ~SinkProcess();
  SinkProcess(const SinkProcess&) = delete;
  SinkProcess& operator=(const SinkProcess&) = delete;

  int port() const { return port_; }
  const std::string& AuthorityFile() const { return authorityFile_; }

  /// Throws std::runtime_error when the service does not answer.
  SinkStatistics Statistics() const;

 private:
  std::string authorityFile_;
  orvane_host::ChildProcess process_;
  int port_ = 0;
};

/// URL of the API's operation ("get_project_list") of the customer "acme".
std::string ApiUrl(const std::string& operation);

}  // namespace bench
