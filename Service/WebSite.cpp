#include "WebSite.h"

#include <fstream>

#include "Deployment.h"
#include "FileResponse.h"
#include "Html.h"

namespace orvane_service {
namespace {

const std::string kFolder = "vorrel-premiere/";
const std::string kInstaller = "orvane-vorrel-APP.dmg";

}  // namespace

// Read for each request: a release that is put there while the service runs is announced at once.
std::string WebSite::Version() const {
  if (version_) return *version_;
  std::ifstream file(downloads_ / "version.txt");
  std::string line;
  return std::getline(file, line) ? line : ORVANE_VERSION;
}

Response WebSite::FrontPage() const {
  const std::string body = "<p>The plug-in's newest version is " + EscapeHtml(Version()) + ".</p>\n";
  const std::string link = "<p><a href=\"/downloads/" + kFolder + kInstaller + "\">Download it</a></p>\n";
  return Page(200, "Orvane", std::filesystem::exists(downloads_ / kInstaller) ? body + link : body);
}

Response WebSite::Download(const Request& request, const std::string& file) const {
  const bool is_version = file == kFolder + "version.txt";
  if (!is_version && file != kFolder + kInstaller) return NotFoundPage();
  if (is_version) {
    Response response(200, Version(), "text/plain; charset=utf-8");
    response.SetHeader("Cache-Control", "no-cache");
    return response;
  }
  auto installer = FileResponse(request, downloads_ / kInstaller, "application/x-apple-diskimage", "");
  if (installer) return std::move(*installer);
  return Page(404, "No installer", "<p>The installer has not been published on this service.</p>\n");
}

}  // namespace orvane_service
