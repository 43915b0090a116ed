// Lets this process alone trust the authority of a service that runs on this machine.
//
// The plug-in verifies servers by libcurl's defaults and offers no way around them. A program that hosts it for tests
// links this file, which takes the place of curl_easy_perform in the process, the plug-in's calls included: it sets the
// options below on the handle and calls libcurl's own function. Without settings it only calls on.
#pragma once

#include <string>

namespace orvane_host {

/// Makes transfers accept certificates of the authority in the PEM file at path, and of no other. An empty path goes
/// back to libcurl's defaults. Not to be called while a transfer runs.
void SetTrustedAuthority(const std::string& path);

/// Sends the connections of all transfers to port on 127.0.0.1, whatever the URL says; names are still verified. 0
/// goes back to the URLs' own addresses. Not to be called while a transfer runs.
void SetConnectPort(int port);

}  // namespace orvane_host
