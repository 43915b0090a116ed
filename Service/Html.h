// The few pieces of HTML that the pages are made of.
#pragma once

#include <string>

#include "HttpsServer.h"

namespace orvane_service {

/// Makes text safe inside elements and quoted attributes. What is not UTF-8 is replaced.
std::string EscapeHtml(const std::string& text);

/// A whole page. The title is plain text, the body is HTML. No script runs on it, and it loads nothing from elsewhere,
/// whatever the body holds.
Response Page(int status, const std::string& title, const std::string& body);

/// A page that says that nothing is at this address.
Response NotFoundPage();

}  // namespace orvane_service
