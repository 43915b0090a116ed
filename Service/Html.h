// The few pieces of HTML that the pages are made of.
#pragma once

#include <httplib.h>

#include <string>
#include <string_view>

namespace orvane_service {

/// Makes text safe inside elements and quoted attributes.
std::string EscapeHtml(std::string_view text);

/// Sends a whole page. The title is plain text, the body is HTML. No script runs on it, and it loads nothing from
/// elsewhere, whatever the body holds.
void SendPage(httplib::Response& response, int status, const std::string& title, const std::string& body);

/// Sends a page that says that nothing is at this address.
void SendNotFound(httplib::Response& response);

}  // namespace orvane_service
