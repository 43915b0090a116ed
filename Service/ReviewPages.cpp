#include "ReviewPages.h"

#include <glib.h>

#include <algorithm>
#include <map>

#include "Customers.h"
#include "FileResponse.h"
#include "Html.h"

namespace orvane_service {
namespace {

constexpr const char* kOtherType = "application/octet-stream";

// With the name for the browser's save dialog.
std::string Disposition(const std::string& file_name, bool inline_allowed) {
  g_autofree char* encoded = g_uri_escape_string(file_name.c_str(), nullptr, FALSE);
  return std::string(inline_allowed ? "inline" : "attachment") + "; filename*=UTF-8''" + encoded;
}

std::string Item(const char* name, const std::string& value) {
  return "<dt>" + std::string(name) + "</dt><dd dir=\"auto\">" + EscapeHtml(value) + "</dd>\n";
}

std::string PageBody(const FileDetails& details) {
  const StoredFile& file = details.file;
  g_autoptr(GDateTime) moment = g_date_time_new_from_unix_utc(file.uploaded_at);
  g_autofree char* time = g_date_time_format(moment, "%Y-%m-%d %H:%M UTC");
  g_autofree char* size = g_format_size_full(static_cast<guint64>(file.size), G_FORMAT_SIZE_LONG_FORMAT);
  const std::string address = "/review/" + file.id + "/file";
  std::string body;
  if (ContentTypeOf(file.name) != kOtherType) {
    body += "<video controls preload=\"metadata\" src=\"" + address + "\"></video>\n";
  }
  if (!file.description.empty()) body += "<p dir=\"auto\">" + EscapeHtml(file.description) + "</p>\n";
  if (!file.tags.empty()) {
    body += "<ul class=\"tags\">";
    for (const std::string& tag : file.tags) body += "<li dir=\"auto\">" + EscapeHtml(tag) + "</li>";
    body += "</ul>\n";
  }
  body += "<dl>\n" + Item("Project", details.project_name) + Item("Folder", details.folder_path) +
          Item("File", file.name) + Item("Size", size) + Item("SHA-256", file.sha256) +
          Item("Uploaded", std::string(time) + " by " + details.user_name) + "</dl>\n";
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
  const std::optional<std::string> label = ParseHost(request.Header("Host"));
  const std::optional<Customer> customer = label ? catalog_.FindCustomer(*label) : std::nullopt;
  return customer ? catalog_.FindFile(customer->id, id) : std::nullopt;
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
