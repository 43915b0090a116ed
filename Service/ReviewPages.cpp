#include "ReviewPages.h"

#include <glib.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <map>

#include "FileResponse.h"
#include "HostNames.h"
#include "Html.h"

namespace orvane_service {
namespace {

constexpr const char* kOtherType = "application/octet-stream";

std::string SizeText(int64_t bytes) {
  static const char* const units[] = {"bytes", "kB", "MB", "GB"};
  double amount = static_cast<double>(bytes);
  int unit = 0;
  while (amount >= 1000 && unit < 3) {
    amount /= 1000;
    ++unit;
  }
  char text[64];
  snprintf(text, sizeof(text), unit == 0 ? "%.0f %s" : "%.1f %s", amount, units[unit]);
  return unit == 0 ? text : std::string(text) + " (" + std::to_string(bytes) + " bytes)";
}

std::string TimeText(int64_t seconds) {
  const time_t time = seconds;
  tm parts{};
  gmtime_r(&time, &parts);
  char text[64];
  strftime(text, sizeof(text), "%Y-%m-%d %H:%M UTC", &parts);
  return text;
}

// With the name for the browser's save dialog.
std::string Disposition(const std::string& file_name, bool inline_allowed) {
  g_autofree char* encoded = g_uri_escape_string(file_name.c_str(), nullptr, FALSE);
  return std::string(inline_allowed ? "inline" : "attachment") + "; filename*=UTF-8''" + encoded;
}

std::string Item(const char* name, const std::string& value) {
  return "<dt>" + std::string(name) + "</dt><dd>" + EscapeHtml(value) + "</dd>\n";
}

std::string PageBody(const FileDetails& details) {
  const StoredFile& file = details.file;
  const std::string address = "/review/" + file.id + "/file";
  std::string body;
  if (ContentTypeOf(file.name) != kOtherType) {
    body += "<video controls preload=\"metadata\" src=\"" + address + "\"></video>\n";
  }
  if (!file.description.empty()) body += "<p class=\"description\">" + EscapeHtml(file.description) + "</p>\n";
  if (!file.tags.empty()) {
    body += "<ul class=\"tags\">";
    for (const std::string& tag : file.tags) body += "<li>" + EscapeHtml(tag) + "</li>";
    body += "</ul>\n";
  }
  body += "<dl>\n" + Item("Project", details.project_name) + Item("Folder", details.folder_name) +
          Item("File", file.name) + Item("Size", SizeText(file.size)) + Item("SHA-256", file.sha256) +
          Item("Uploaded", TimeText(file.uploaded_at) + " by " + details.user_name) + "</dl>\n";
  body += "<p><a href=\"" + address + "\" download>Download the file</a></p>\n";
  return body;
}

}  // namespace

std::string ContentTypeOf(const std::string& file_name) {
  static const std::map<std::string, std::string> types = {
      {".mp4", "video/mp4"},   {".m4v", "video/mp4"},        {".mov", "video/quicktime"},
      {".webm", "video/webm"}, {".mkv", "video/x-matroska"}, {".avi", "video/x-msvideo"},
      {".mpg", "video/mpeg"},  {".mxf", "application/mxf"},  {".mp3", "audio/mpeg"},
      {".m4a", "audio/mp4"},   {".wav", "audio/wav"},        {".ogg", "audio/ogg"}};
  const size_t point = file_name.rfind('.');
  if (point == std::string::npos) return kOtherType;
  std::string extension = file_name.substr(point);
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  const auto type = types.find(extension);
  return type == types.end() ? kOtherType : type->second;
}

std::optional<FileDetails> ReviewPages::Find(const Request& request, const std::string& id) {
  const HostName host = ParseHost(request.Header("Host"));
  if (host.site != Site::kCustomer) return std::nullopt;
  const std::optional<Customer> customer = catalog_.FindCustomer(host.subdomain);
  if (!customer) return std::nullopt;
  return catalog_.FindFile(customer->id, id);
}

Response ReviewPages::ShowPage(const Request& request, const std::string& id) {
  const std::optional<FileDetails> details = Find(request, id);
  return details ? Page(200, details->file.title, PageBody(*details)) : NotFoundPage();
}

Response ReviewPages::SendContent(const Request& request, const std::string& id) {
  const std::optional<FileDetails> details = Find(request, id);
  if (!details) return NotFoundPage();
  const StoredFile& file = details->file;
  const std::string type = ContentTypeOf(file.name);
  std::optional<Response> response = FileResponse(request, files_.PathOf(file.id), type, "\"" + file.sha256 + "\"");
  if (!response) return NotFoundPage();
  response->SetHeader("Content-Disposition", Disposition(file.name, type != kOtherType));
  response->SetHeader("X-Content-Type-Options", "nosniff");
  return std::move(*response);
}

}  // namespace orvane_service
