#include "TransferRedirect.h"

#include <curl/curl.h>
#include <dlfcn.h>

#include <atomic>
#include <stdexcept>
#include <string>

namespace {

constexpr int kNoRedirect = 0;
std::atomic<int> redirectPort{kNoRedirect};

/// The library's own function of that name, behind those that this program defines.
template <typename Function>
Function* LibraryFunction(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

void StartRedirect(int port) {
  if (redirectPort.exchange(port) != kNoRedirect) throw std::logic_error("transfers are redirected already");
}

}  // namespace

extern "C" CURLcode curl_easy_perform(CURL* handle) {
  static auto* const perform = LibraryFunction<CURLcode(CURL*)>("curl_easy_perform");
  // The library's own, too: a test may stand in for this one to watch the options that the program sets.
  static auto* const setOption = LibraryFunction<CURLcode(CURL*, CURLoption, ...)>("curl_easy_setopt");
  const int port = redirectPort;
  if (port == kNoRedirect) return perform(handle);
  const std::string target = "::127.0.0.1:" + std::to_string(port);
  curl_slist* const targets = curl_slist_append(nullptr, target.c_str());
  setOption(handle, CURLOPT_CAINFO, orvane_test::ScriptedServer::AuthorityFile().c_str());
  setOption(handle, CURLOPT_CONNECT_TO, targets);
  const CURLcode result = perform(handle);
  setOption(handle, CURLOPT_CONNECT_TO, static_cast<curl_slist*>(nullptr));
  curl_slist_free_all(targets);
  return result;
}

/// Read by the leak sanitizer. A handle that is reset forgets the list of cookie files, which it had allocated: 17
/// bytes for every transfer.
extern "C" __attribute__((weak)) const char* __lsan_default_suppressions() {
  return "leak:libcurl.so\n";
}

namespace orvane_test {

TransferRedirect::TransferRedirect(const ScriptedServer& server) {
  StartRedirect(server.port());
}

TransferRedirect::TransferRedirect(int port) {
  StartRedirect(port);
}

TransferRedirect::~TransferRedirect() {
  redirectPort = kNoRedirect;
}

}  // namespace orvane_test
