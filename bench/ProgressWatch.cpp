#include "ProgressWatch.h"

#include <curl/curl.h>
#include <dlfcn.h>

#include <atomic>
#include <cstdarg>

// The library's header makes a macro of the function that is defined below.
#undef curl_easy_setopt

namespace {

std::atomic<bool> watching{false};
std::atomic<long long> calls{0};
curl_progress_callback watched = nullptr;

int CountProgress(void* client, double downloadTotal, double downloaded, double uploadTotal, double uploaded) {
  ++calls;
  return watched(client, downloadTotal, downloaded, uploadTotal, uploaded);
}

}  // namespace

#pragma GCC diagnostic push
// The option is an enumeration, which va_start may not like; the library's own function is declared that way.
#pragma GCC diagnostic ignored "-Wvarargs"
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

extern "C" CURLcode curl_easy_setopt(CURL* handle, CURLoption option, ...) {
  typedef CURLcode Function(CURL*, CURLoption, ...);
  static auto* const setOption = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, "curl_easy_setopt"));
  va_list arguments;
  va_start(arguments, option);
  const bool isLong = option < CURLOPTTYPE_OBJECTPOINT;
  const long number = isLong ? va_arg(arguments, long) : 0;
  void* const pointer = isLong ? nullptr : va_arg(arguments, void*);
  va_end(arguments);
  if (isLong) return setOption(handle, option, number);
  if (!watching || option != CURLOPT_PROGRESSFUNCTION || pointer == nullptr) return setOption(handle, option, pointer);
  watched = reinterpret_cast<curl_progress_callback>(pointer);
  return setOption(handle, option, &CountProgress);
}

#pragma GCC diagnostic pop

namespace bench {

ProgressWatch::ProgressWatch() {
  calls = 0;
  watching = true;
}

ProgressWatch::~ProgressWatch() {
  watching = false;
}

long long ProgressWatch::Calls() const {
  return calls;
}

}  // namespace bench
