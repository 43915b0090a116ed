#include "TransferRedirect.h"

#include "LocalTrust.h"

// Read by the leak sanitizer. A handle that is reset forgets the list of cookie files, which it had allocated: 17
// bytes for every transfer.
extern "C" __attribute__((weak)) const char* __lsan_default_suppressions() {
  return "leak:libcurl.so\n";
}

namespace orvane_test {

TransferRedirect::TransferRedirect(const ScriptedServer& server) : TransferRedirect(server.port()) {}

TransferRedirect::TransferRedirect(int port) {
  orvane_host::SetTrustedAuthority(ScriptedServer::AuthorityFile());
  orvane_host::SetConnectPort(port);
}

TransferRedirect::~TransferRedirect() {
  orvane_host::SetTrustedAuthority("");
  orvane_host::SetConnectPort(0);
}

}  // namespace orvane_test
