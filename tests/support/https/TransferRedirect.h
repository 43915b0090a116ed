// Sends this process's transfers to a test server.
#pragma once

#include "ScriptedServer.h"

namespace orvane_test {

/// While it lives, every curl_easy_perform() of the process connects to the server, whatever host and port the URL
/// names, and trusts the server's authority. Host name checks and the Host header stay those of the URL. One at a time.
///
/// Works by the stand-in host's own curl_easy_perform(): link orvane_test_https into the executable itself.
class TransferRedirect {
 public:
  explicit TransferRedirect(const ScriptedServer& server);
  /// Sends them to a port of this machine, for instance one where nobody listens.
  explicit TransferRedirect(int port);
  ~TransferRedirect();
  TransferRedirect(const TransferRedirect&) = delete;
  TransferRedirect& operator=(const TransferRedirect&) = delete;
};

}  // namespace orvane_test
