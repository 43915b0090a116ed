#include "Html.h"

#include <glib.h>

namespace orvane_service {
namespace {

constexpr const char* kStyle =
    "body{font:16px/1.5 system-ui,sans-serif;max-width:60rem;margin:2rem auto;padding:0 1rem;color:#222}"
    "h1{overflow-wrap:anywhere}video{width:100%;max-height:70vh;background:#000}"
    "p{white-space:pre-wrap;overflow-wrap:anywhere}"
    "dt{font-weight:600}dd{margin:0 0 .5rem;overflow-wrap:anywhere}"
    "ul.tags{list-style:none;padding:0}ul.tags li{display:inline-block;background:#e8eef5;border-radius:3px;"
    "padding:0 .5rem;margin:0 .3rem .3rem 0}";

}  // namespace

std::string EscapeHtml(const std::string& text) {
  g_autofree char* valid = g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()));
  g_autofree char* escaped = g_markup_escape_text(valid, -1);
  return escaped;
}

Response Page(int status, const std::string& title, const std::string& body) {
  const std::string name = EscapeHtml(title);
  Response response(status,
                    "<!DOCTYPE html>\n<html lang=\"en\">\n<head><meta charset=\"utf-8\">"
                    "<meta name=\"viewport\" content=\"width=device-width\">\n<title>" +
                        name + "</title>\n<style>" + kStyle + "</style></head>\n<body>\n<h1 dir=\"auto\">" + name +
                        "</h1>\n" + body + "</body>\n</html>\n",
                    "text/html; charset=utf-8");
  response.SetHeader("Content-Security-Policy",
                     "default-src 'none'; media-src 'self'; style-src 'unsafe-inline'; base-uri 'none'; "
                     "form-action 'none'; frame-ancestors 'none'");
  response.SetHeader("X-Content-Type-Options", "nosniff");
  response.SetHeader("Referrer-Policy", "no-referrer");
  return response;
}

Response NotFoundPage() {
  return Page(404, "Not found", "<p>There is nothing at this address.</p>\n");
}

}  // namespace orvane_service
