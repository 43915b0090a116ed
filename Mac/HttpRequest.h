// The transport: the only code of the plug-in that talks to the network.
//
// All operations are static and share one libcurl easy handle, so only one transfer may run at a time; nothing is
// locked. Every transfer starts from a handle in its default state. Nothing here throws on purpose.
#pragma once

#include <curl/curl.h>

#include <ostream>
#include <string>

class HttpRequest {
 public:
  /// Creates the shared handle. curl_global_init() must have been called. Without a handle every transfer fails.
  /// [main-thread]
  static void init();

  /// Releases the shared handle. The variable keeps its value, so init() must come before the next transfer.
  /// [main-thread]
  static void cleanup();

  /// The most that is taken of an answer, in bytes. Lists of ten thousand projects are far below; what is above would
  /// only fill the memory of the application.
  static constexpr size_t kMaxAnswerBytes = 32 * 1024 * 1024;

  /// GET. Returns the body, whatever the HTTP status, or "error" when no complete answer of at most kMaxAnswerBytes
  /// came within 30 seconds. [main-thread]
  static std::string get(std::string url);

  /// POST of a body that is already application/x-www-form-urlencoded; it is sent as it stands. Returns as get().
  /// [main-thread]
  static std::string post(std::string url, std::string body);

  /// Multipart POST of the file at filePath with the session's credentials and the g_ variables of the upload. The
  /// folder is g_fld; folderId is not used. Has no time limit. Calls g_pUpdFunc for every progress call of libcurl.
  /// Returns as get(). [upload-queue]
  static std::string upload(std::string url, std::string filePath, std::string authToken, std::string authKey,
                            std::string folderId);

  /// The transfers behind the three operations. The body goes to out; timeout is in seconds, 0 for none. Each returns
  /// the result of the last libcurl call it made.
  static CURLcode curl_read(const std::string& url, std::ostream& out, long timeout);
  static CURLcode curl_read_with_post(const std::string& url, std::ostream& out, const std::string& body, long timeout);
  static CURLcode curl_upload(const std::string& url, std::ostream& out, const std::string& filePath,
                              const std::string& authToken, const std::string& authKey, const std::string& folderId,
                              long timeout);

  /// libcurl's write callback; userdata is the std::ostream. Returns the bytes taken, 0 to abort the transfer.
  static size_t data_write(void* ptr, size_t size, size_t nmemb, void* userdata);

  /// libcurl's progress callback. The amounts are bytes. Always returns 0: progress never aborts a transfer.
  static int older_progress(void* clientp, double dltotal, double dlnow, double ultotal, double ulnow);

  /// Hands the upload's two amounts to g_pUpdFunc. Always returns 0.
  static int progressCallback(void* clientp, curl_off_t dltotal, curl_off_t dlnow, curl_off_t ultotal,
                              curl_off_t ulnow);
};
