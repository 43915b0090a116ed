#include "HttpsClient.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <chrono>
#include <memory>

namespace {

struct CurlDeleter {
  void operator()(CURL* curl) const { curl_easy_cleanup(curl); }
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
  void operator()(curl_mime* form) const { curl_mime_free(form); }
};
using CurlPtr = std::unique_ptr<CURL, CurlDeleter>;
using ListPtr = std::unique_ptr<curl_slist, CurlDeleter>;
using FormPtr = std::unique_ptr<curl_mime, CurlDeleter>;

size_t AppendTo(char* data, size_t size, size_t count, void* text) {
  static_cast<std::string*>(text)->append(data, size * count);
  return size * count;
}

Reply Perform(CURL* curl, const std::string& url, const std::filesystem::path& authority,
              const std::vector<std::string>& headers) {
  Reply reply;
  curl_slist* lines = nullptr;
  for (const std::string& header : headers) lines = curl_slist_append(lines, header.c_str());
  const ListPtr owner(lines);
  curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
  curl_easy_setopt(curl, CURLOPT_CAINFO, authority.c_str());
  curl_easy_setopt(curl, CURLOPT_HTTPHEADER, lines);
  curl_easy_setopt(curl, CURLOPT_TIMEOUT, 60L);
  curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, AppendTo);
  curl_easy_setopt(curl, CURLOPT_WRITEDATA, &reply.body);
  curl_easy_setopt(curl, CURLOPT_HEADERFUNCTION, AppendTo);
  curl_easy_setopt(curl, CURLOPT_HEADERDATA, &reply.headers);
  reply.result = curl_easy_perform(curl);
  curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &reply.status);
  curl_easy_getinfo(curl, CURLINFO_SIZE_UPLOAD_T, &reply.sent);
  return reply;
}

}  // namespace

nlohmann::json Reply::Root() const {
  const nlohmann::json answer = nlohmann::json::parse(body, nullptr, false);
  if (answer.is_object() && answer.contains("root")) return answer["root"];
  ADD_FAILURE() << "no answer of the API: " << curl_easy_strerror(result) << ", " << status << ", " << body;
  return {{"status", ""}, {"message", ""}, {"payload", nlohmann::json::array()}};
}

Reply HttpsClient::Get(const std::string& url, const std::vector<std::string>& headers) const {
  const CurlPtr curl(curl_easy_init());
  return Perform(curl.get(), url, authority_, headers);
}

Reply HttpsClient::Post(const std::string& url, const std::string& body) const {
  const CurlPtr curl(curl_easy_init());
  curl_easy_setopt(curl.get(), CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
  curl_easy_setopt(curl.get(), CURLOPT_COPYPOSTFIELDS, body.c_str());
  return Perform(curl.get(), url, authority_, {});
}

Reply HttpsClient::PostForm(const std::string& url, const std::vector<Part>& parts,
                            const std::vector<std::string>& headers) const {
  const CurlPtr curl(curl_easy_init());
  const FormPtr form(curl_mime_init(curl.get()));
  for (const Part& part : parts) {
    curl_mimepart* added = curl_mime_addpart(form.get());
    curl_mime_name(added, part.name.c_str());
    curl_mime_data(added, part.content.data(), part.content.size());
    if (part.file_name) curl_mime_filename(added, part.file_name->c_str());
  }
  curl_easy_setopt(curl.get(), CURLOPT_MIMEPOST, form.get());
  return Perform(curl.get(), url, authority_, headers);
}

RawConnection::RawConnection(const std::string& origin, const std::filesystem::path& authority)
    : curl_(curl_easy_init()) {
  curl_easy_setopt(curl_, CURLOPT_URL, origin.c_str());
  curl_easy_setopt(curl_, CURLOPT_CAINFO, authority.c_str());
  curl_easy_setopt(curl_, CURLOPT_CONNECT_ONLY, 1L);
  const CURLcode result = curl_easy_perform(curl_);
  EXPECT_EQ(result, CURLE_OK) << curl_easy_strerror(result);
}

RawConnection::~RawConnection() {
  curl_easy_cleanup(curl_);
}

void RawConnection::Send(std::string_view data) {
  while (!data.empty()) {
    size_t sent = 0;
    const CURLcode result = curl_easy_send(curl_, data.data(), data.size(), &sent);
    if (result == CURLE_AGAIN) continue;
    ASSERT_EQ(result, CURLE_OK) << curl_easy_strerror(result);
    data.remove_prefix(sent);
  }
}

std::string RawConnection::ReadToEnd() {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  curl_socket_t socket = CURL_SOCKET_BAD;
  curl_easy_getinfo(curl_, CURLINFO_ACTIVESOCKET, &socket);
  std::string text;
  while (std::chrono::steady_clock::now() < deadline) {
    char buffer[4096];
    size_t count = 0;
    const CURLcode result = curl_easy_recv(curl_, buffer, sizeof(buffer), &count);
    if (result == CURLE_AGAIN) {
      pollfd entry{socket, POLLIN, 0};
      poll(&entry, 1, 100);
      continue;
    }
    if (result != CURLE_OK || count == 0) break;
    text.append(buffer, count);
  }
  return text;
}
