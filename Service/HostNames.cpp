#include "HostNames.h"

#include <algorithm>

namespace orvane_service {

HostName ParseHost(std::string_view header) {
  std::string host(header.substr(0, header.find(':')));
  std::transform(host.begin(), host.end(), host.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  if (host == kDomain) return {Site::kWeb, ""};
  const std::string suffix = "." + std::string(kDomain);
  if (host.size() <= suffix.size() || host.compare(host.size() - suffix.size(), suffix.size(), suffix) != 0) return {};
  const std::string label = host.substr(0, host.size() - suffix.size());
  if (label == "www") return {Site::kWeb, ""};
  if (label.find('.') != std::string::npos) return {};
  return {Site::kCustomer, label};
}

}  // namespace orvane_service
