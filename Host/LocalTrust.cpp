#include "LocalTrust.h"

#include <curl/curl.h>
#include <dlfcn.h>

#include <memory>

namespace {

struct ListDeleter {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

std::string authority_path;
// libcurl does not copy the list, so it must outlive every transfer.
std::unique_ptr<curl_slist, ListDeleter> connect_to;

using PerformFunction = CURLcode (*)(CURL*);

PerformFunction RealPerform() {
  static const auto real = reinterpret_cast<PerformFunction>(dlsym(RTLD_NEXT, "curl_easy_perform"));
  return real;
}

}  // namespace

namespace orvane_host {

void SetTrustedAuthority(const std::string& path) {
  authority_path = path;
}

void SetConnectPort(int port) {
  connect_to.reset(port == 0 ? nullptr : curl_slist_append(nullptr, ("::127.0.0.1:" + std::to_string(port)).c_str()));
}

}  // namespace orvane_host

extern "C" __attribute__((visibility("default"))) CURLcode curl_easy_perform(CURL* handle) {
  if (!RealPerform()) return CURLE_FAILED_INIT;
  if (handle && !authority_path.empty()) curl_easy_setopt(handle, CURLOPT_CAINFO, authority_path.c_str());
  if (handle && connect_to) curl_easy_setopt(handle, CURLOPT_CONNECT_TO, connect_to.get());
  return RealPerform()(handle);
}
