// The public web site: the version of the newest plug-in and its installer.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "HttpsServer.h"

namespace orvane_service {

/// May be used by any thread.
class WebSite {
 public:
  /// The installer is taken from the downloads folder, where whoever runs the service puts it, and so is the version
  /// unless one is given: from version.txt beside the installer.
  WebSite(std::optional<std::string> version, std::filesystem::path downloads)
      : version_(std::move(version)), downloads_(std::move(downloads)) {}

  Response FrontPage() const;

  /// A file below the site's "downloads": the version as text, without a line end; the installer, or a page that says
  /// that there is none.
  Response Download(const Request& request, const std::string& file) const;

 private:
  std::string Version() const;

  std::optional<std::string> version_;
  std::filesystem::path downloads_;
};

}  // namespace orvane_service
