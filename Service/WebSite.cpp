#include "WebSite.h"

#include <fstream>

#include "FileResponse.h"
#include "HostNames.h"
#include "Html.h"

namespace orvane_service {
namespace {

constexpr const char* kInstaller = "orvane-vorrel-APP.dmg";
constexpr const char* kFirstVersion = "1.1";

bool IsWebSite(const httplib::Request& request) {
  return ParseHost(request.get_header_value("Host")).site == Site::kWeb;
}

}  // namespace

// Read for each request: a release that is put there while the service runs is announced at once.
std::string WebSite::Version() const {
  if (version_) return *version_;
  std::ifstream file(downloads_ / "version.txt");
  std::string line;
  return std::getline(file, line) ? line : kFirstVersion;
}

void WebSite::ShowFrontPage(const httplib::Request& request, httplib::Response& response) {
  switch (ParseHost(request.get_header_value("Host")).site) {
    case Site::kWeb:
      SendPage(response, 200, "Orvane",
               "<p>The plug-in's newest version is " + EscapeHtml(Version()) +
                   ".</p>\n<p><a href=\"/downloads/vorrel-premiere/" + kInstaller + "\">Download it</a></p>\n");
      break;
    case Site::kCustomer:
      SendPage(response, 200, "Orvane", "<p>Uploaded files are shown under the link that their upload gave.</p>\n");
      break;
    case Site::kUnknown:
      SendNotFound(response);
  }
}

void WebSite::SendVersion(const httplib::Request& request, httplib::Response& response) {
  if (!IsWebSite(request)) return SendNotFound(response);
  response.set_header("Cache-Control", "no-cache");
  response.set_content(Version(), "text/plain; charset=utf-8");
}

void WebSite::SendInstaller(const httplib::Request& request, httplib::Response& response) {
  if (!IsWebSite(request)) return SendNotFound(response);
  SendFile(request, response, downloads_ / kInstaller, "application/x-apple-diskimage", "");
  if (response.status == 404) {
    SendPage(response, 404, "No installer", "<p>The installer has not been published on this service.</p>\n");
  }
}

}  // namespace orvane_service
