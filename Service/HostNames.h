// Which part of the service a request is for: its Host header decides.
#pragma once

#include <string>
#include <string_view>

namespace orvane_service {

/// All host names of the service are this or end in a point and this. Names under "localhost" lead to this machine
/// without being registered anywhere.
constexpr std::string_view kDomain = "orvane.localhost";

enum class Site { kWeb, kCustomer, kUnknown };

struct HostName {
  Site site = Site::kUnknown;
  /// The customer's, in lower case; empty for other sites.
  std::string subdomain;
};

/// Reads a Host header with or without a port. Case does not matter. The bare domain is the web site too.
HostName ParseHost(std::string_view header);

}  // namespace orvane_service
