#include "HttpRequest.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>

#include "AnswerBody.h"
#include "WorkflowState.h"

// The form and progress calls below have successors in newer libraries, which mark the old ones as deprecated. They
// are kept: libcurls of every macOS release that the plug-in runs on have them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace {

constexpr long kRequestTimeoutSeconds = 30;
constexpr long kNoTimeout = 0;

// The one handle of the process. Null until HttpRequest::init().
CURL* curl = nullptr;

// Result of the last libcurl call of a transfer. Before the first one, a transfer without a handle has to fail.
CURLcode code = CURLE_FAILED_INIT;

// Sets one option of the handle. Returns whether that worked; the result is in code.
template <typename T>
bool SetOption(CURLoption option, T value) {
  code = curl_easy_setopt(curl, option, value);
  return code == CURLE_OK;
}

// The options that every transfer begins with.
bool SetCommonOptions(std::ostream& out) {
  return SetOption(CURLOPT_WRITEFUNCTION, &HttpRequest::data_write) &&
         // An empty file name switches the cookie engine on without reading a file.
         SetOption(CURLOPT_COOKIEFILE, "") &&      //
         SetOption(CURLOPT_NOPROGRESS, 1L) &&      //
         SetOption(CURLOPT_FOLLOWLOCATION, 1L) &&  //
         SetOption(CURLOPT_WRITEDATA, &out);
}

// A multipart form, freed with this object. The file is read when the form is sent.
class UploadForm {
 public:
  UploadForm() = default;
  ~UploadForm() { curl_formfree(first_); }
  UploadForm(const UploadForm&) = delete;
  UploadForm& operator=(const UploadForm&) = delete;

  void AddFile(const char* name, const std::string& path) {
    curl_formadd(&first_, &last_, CURLFORM_COPYNAME, name, CURLFORM_FILE, path.c_str(), CURLFORM_END);
  }
  void AddText(const char* name, const std::string& text) {
    curl_formadd(&first_, &last_, CURLFORM_COPYNAME, name, CURLFORM_COPYCONTENTS, text.c_str(), CURLFORM_END);
  }
  curl_httppost* get() const { return first_; }

 private:
  curl_httppost* first_ = nullptr;
  curl_httppost* last_ = nullptr;
};

// Adds the parts of an upload in the order that the service reads them.
void FillUploadForm(UploadForm& form, const std::string& filePath, const std::string& authToken,
                    const std::string& authKey) {
  form.AddFile("Filedata", filePath);
  form.AddText("auth_token", authToken);
  form.AddText("auth_key", authKey);
  form.AddText("folder_id", g_fld);
  form.AddText("title", g_title);
  if (!g_desc.empty()) form.AddText("description", g_desc);
  for (const std::string& tag : g_tags) form.AddText("tags_array[]", tag);
}

// Truncates towards zero. What does not fit becomes the nearest value that does, and NaN becomes 0.
curl_off_t ToAmount(double bytes) {
  constexpr double kLimit = 9223372036854775808.0;  // 2^63, the first double above the range
  if (std::isnan(bytes)) return 0;
  if (bytes >= kLimit) return std::numeric_limits<std::int64_t>::max();
  if (bytes < -kLimit) return std::numeric_limits<std::int64_t>::min();
  return static_cast<curl_off_t>(bytes);
}

std::string BodyOrError(CURLcode result, AnswerBody& out) {
  return result == CURLE_OK ? out.Take() : "error";
}

}  // namespace

void HttpRequest::init() {
  std::fputs("orvanevorrel: [HttpRequest: curl init]\n", stderr);
  curl = curl_easy_init();
  // Otherwise the result of an earlier export would stand.
  if (curl == nullptr) code = CURLE_FAILED_INIT;
}

void HttpRequest::cleanup() {
  std::fputs("orvanevorrel: [HttpRequest: curl cleanup]\n", stderr);
  curl_easy_cleanup(curl);
}

std::string HttpRequest::get(std::string url) {
  AnswerBody out(kMaxAnswerBytes);
  return BodyOrError(curl_read(url, out.Stream(), kRequestTimeoutSeconds), out);
}

std::string HttpRequest::post(std::string url, std::string body) {
  AnswerBody out(kMaxAnswerBytes);
  return BodyOrError(curl_read_with_post(url, out.Stream(), body, kRequestTimeoutSeconds), out);
}

std::string HttpRequest::upload(std::string url, std::string filePath, std::string authToken, std::string authKey,
                                std::string folderId) {
  AnswerBody out(kMaxAnswerBytes);
  return BodyOrError(curl_upload(url, out.Stream(), filePath, authToken, authKey, folderId, kNoTimeout), out);
}

CURLcode HttpRequest::curl_read(const std::string& url, std::ostream& out, long timeout) {
  if (curl == nullptr) return code;
  if (SetCommonOptions(out) && SetOption(CURLOPT_TIMEOUT, timeout) && SetOption(CURLOPT_URL, url.c_str())) {
    code = curl_easy_perform(curl);
  }
  curl_easy_reset(curl);
  return code;
}

CURLcode HttpRequest::curl_read_with_post(const std::string& url, std::ostream& out, const std::string& body,
                                          long timeout) {
  if (curl == nullptr) return code;
  if (SetCommonOptions(out) && SetOption(CURLOPT_POSTFIELDS, body.c_str()) && SetOption(CURLOPT_TIMEOUT, timeout) &&
      SetOption(CURLOPT_URL, url.c_str())) {
    code = curl_easy_perform(curl);
  }
  curl_easy_reset(curl);
  return code;
}

CURLcode HttpRequest::curl_upload(const std::string& url, std::ostream& out, const std::string& filePath,
                                  const std::string& authToken, const std::string& authKey, const std::string&,
                                  long timeout) {
  if (curl == nullptr) return code;
  UploadForm form;
  FillUploadForm(form, filePath, authToken, authKey);
  if (SetCommonOptions(out) && SetOption(CURLOPT_TIMEOUT, timeout) && SetOption(CURLOPT_URL, url.c_str()) &&
      SetOption(CURLOPT_HTTPPOST, form.get()) && SetOption(CURLOPT_PROGRESSFUNCTION, &HttpRequest::older_progress) &&
      SetOption(CURLOPT_PROGRESSDATA, static_cast<void*>(nullptr)) && SetOption(CURLOPT_NOPROGRESS, 0L)) {
    std::fputs("orvanevorrel: [HttpRequest: starting upload]\n", stderr);
    code = curl_easy_perform(curl);
    std::fprintf(stderr, "orvanevorrel: [HttpRequest] curl returned %s [%d]\n", curl_easy_strerror(code),
                 static_cast<int>(code));
  }
  // The handle lets go of the form before the form is freed.
  curl_easy_reset(curl);
  return code;
}

size_t HttpRequest::data_write(void* ptr, size_t size, size_t nmemb, void* userdata) {
  if (userdata == nullptr) return 0;
  std::ostream& out = *static_cast<std::ostream*>(userdata);
  const size_t length = size * nmemb;
  out.write(static_cast<const char*>(ptr), static_cast<std::streamsize>(length));
  return out.fail() ? 0 : length;
}

int HttpRequest::older_progress(void* clientp, double dltotal, double dlnow, double ultotal, double ulnow) {
  return progressCallback(clientp, ToAmount(dltotal), ToAmount(dlnow), ToAmount(ultotal), ToAmount(ulnow));
}

int HttpRequest::progressCallback(void*, curl_off_t, curl_off_t, curl_off_t ultotal, curl_off_t ulnow) {
  if (g_pUpdFunc != nullptr) g_pUpdFunc(static_cast<double>(ultotal), static_cast<double>(ulnow));
  return 0;
}

#pragma GCC diagnostic pop
