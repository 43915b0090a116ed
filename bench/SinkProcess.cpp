#include "SinkProcess.h"

#include <curl/curl.h>

#include <chrono>
#include <csignal>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "Deployment.h"
#include "LocalTrust.h"

namespace bench {

namespace {

constexpr std::chrono::seconds kStartDeadline(20);

size_t Append(char* data, size_t size, size_t count, void* text) {
  static_cast<std::string*>(text)->append(data, size * count);
  return size * count;
}

// The port that the service says it listens on.
int ReadPort(orvane_host::ChildProcess& process) {
  std::string output;
  std::string errors;
  const auto deadline = std::chrono::steady_clock::now() + kStartDeadline;
  while (output.find('\n') == std::string::npos && std::chrono::steady_clock::now() < deadline) {
    if (!process.Read(100, output, errors)) break;
  }
  if (output.find('\n') == std::string::npos) throw std::runtime_error("the sink did not start: " + errors);
  return std::stoi(output);
}

}  // namespace

SinkProcess::SinkProcess(const std::string& folder)
    : authorityFile_(folder + "/sink/ca.pem"), process_({ORVANE_BENCH_SINK, folder + "/sink"}) {
  port_ = ReadPort(process_);
  orvane_host::SetTrustedAuthority(authorityFile_);
  orvane_host::SetConnectPort(port_);
}

SinkProcess::~SinkProcess() {
  orvane_host::SetTrustedAuthority("");
  orvane_host::SetConnectPort(0);
}

SinkStatistics SinkProcess::Statistics() const {
  const std::unique_ptr<CURL, void (*)(CURL*)> handle(curl_easy_init(), curl_easy_cleanup);
  const std::string url = std::string("https://acme.") + ORVANE_SERVICE_DOMAIN + "/statistics";
  std::string text;
  curl_easy_setopt(handle.get(), CURLOPT_URL, url.c_str());
  curl_easy_setopt(handle.get(), CURLOPT_WRITEFUNCTION, &Append);
  curl_easy_setopt(handle.get(), CURLOPT_WRITEDATA, &text);
  if (curl_easy_perform(handle.get()) != CURLE_OK) throw std::runtime_error("the sink does not answer");
  SinkStatistics statistics;
  std::istringstream numbers(text);
  if (!(numbers >> statistics.connections >> statistics.requests >> statistics.bodyBytes)) {
    throw std::runtime_error("the sink has no statistics");
  }
  return statistics;
}

std::string ApiUrl(const std::string& operation) {
  return std::string("https://acme.") + ORVANE_SERVICE_DOMAIN + "/api/prjacc/" + operation;
}

}  // namespace bench
