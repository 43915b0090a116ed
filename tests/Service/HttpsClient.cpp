#include "HttpsClient.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <algorithm>
#include <functional>

namespace {

constexpr int kDeadline = 20000;

size_t AddBody(char* data, size_t, size_t size, void* reply) {
  static_cast<Reply*>(reply)->body.append(data, size);
  return size;
}

size_t AddHeader(char* data, size_t, size_t size, void* reply) {
  const std::string line(data, size);
  const size_t colon = std::min(line.find(": "), size);
  std::string name = line.substr(0, colon);
  std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return tolower(c); });
  if (colon < size) static_cast<Reply*>(reply)->headers[name] = line.substr(colon + 2, size - colon - 4);
  return size;
}

Reply Perform(const std::string& url, const std::string& authority, const std::function<void(CURL*)>& prepare) {
  const std::unique_ptr<CURL, void (*)(CURL*)> curl(curl_easy_init(), curl_easy_cleanup);
  Reply reply;
  curl_easy_setopt(curl.get(), CURLOPT_URL, url.c_str());
  curl_easy_setopt(curl.get(), CURLOPT_CAINFO, authority.c_str());
  curl_easy_setopt(curl.get(), CURLOPT_PATH_AS_IS, 1L);
  curl_easy_setopt(curl.get(), CURLOPT_TIMEOUT, 60L);
  curl_easy_setopt(curl.get(), CURLOPT_WRITEFUNCTION, &AddBody);
  curl_easy_setopt(curl.get(), CURLOPT_WRITEDATA, &reply);
  curl_easy_setopt(curl.get(), CURLOPT_HEADERFUNCTION, &AddHeader);
  curl_easy_setopt(curl.get(), CURLOPT_HEADERDATA, &reply);
  prepare(curl.get());
  if (curl_easy_perform(curl.get()) == CURLE_OK) curl_easy_getinfo(curl.get(), CURLINFO_RESPONSE_CODE, &reply.status);
  return reply;
}

}  // namespace

nlohmann::json Reply::Root() const {
  const nlohmann::json answer = nlohmann::json::parse(body, nullptr, false);
  if (answer.is_object() && answer.contains("root")) return answer["root"];
  ADD_FAILURE() << "no answer of the API: " << status << ", " << body;
  return {{"status", ""}, {"message", ""}, {"payload", nlohmann::json::array()}};
}

Reply HttpsClient::Get(const std::string& url, const std::vector<std::string>& headers) const {
  std::unique_ptr<curl_slist, void (*)(curl_slist*)> list(nullptr, curl_slist_free_all);
  for (const std::string& header : headers) list.reset(curl_slist_append(list.release(), header.c_str()));
  return Perform(url, authority_, [&](CURL* curl) { curl_easy_setopt(curl, CURLOPT_HTTPHEADER, list.get()); });
}

Reply HttpsClient::Post(const std::string& url, const std::string& body) const {
  return Perform(url, authority_, [&](CURL* curl) {
    curl_easy_setopt(curl, CURLOPT_POSTFIELDSIZE, static_cast<long>(body.size()));
    curl_easy_setopt(curl, CURLOPT_COPYPOSTFIELDS, body.c_str());
  });
}

Reply HttpsClient::PostForm(const std::string& url, const Parts& parts) const {
  std::unique_ptr<curl_mime, void (*)(curl_mime*)> mime(nullptr, curl_mime_free);
  return Perform(url, authority_, [&](CURL* curl) {
    mime.reset(curl_mime_init(curl));
    for (const Part& part : parts) {
      curl_mimepart* entry = curl_mime_addpart(mime.get());
      curl_mime_name(entry, part.name.c_str());
      curl_mime_data(entry, part.content.data(), part.content.size());
      if (!part.file_name.empty()) curl_mime_filename(entry, part.file_name.c_str());
    }
    curl_easy_setopt(curl, CURLOPT_MIMEPOST, mime.get());
  });
}

RawConnection::RawConnection(const std::string& origin, const std::filesystem::path& authority) {
  curl_easy_setopt(curl_.get(), CURLOPT_URL, origin.c_str());
  curl_easy_setopt(curl_.get(), CURLOPT_CAINFO, authority.c_str());
  curl_easy_setopt(curl_.get(), CURLOPT_CONNECT_ONLY, 1L);
  EXPECT_EQ(curl_easy_perform(curl_.get()), CURLE_OK);
}

bool RawConnection::Await(short events, int milliseconds) {
  curl_socket_t socket = -1;
  curl_easy_getinfo(curl_.get(), CURLINFO_ACTIVESOCKET, &socket);
  pollfd entry{socket, events, 0};
  return poll(&entry, 1, milliseconds) > 0;
}

bool RawConnection::Send(std::string_view data) {
  while (!data.empty()) {
    size_t sent = 0;
    const CURLcode result = curl_easy_send(curl_.get(), data.data(), data.size(), &sent);
    if (result != CURLE_OK && (result != CURLE_AGAIN || !Await(POLLOUT, kDeadline))) return false;
    data.remove_prefix(sent);
  }
  return true;
}

void RawConnection::SendUntilStuck(int milliseconds) {
  const std::string data(65536, 'v');
  CURLcode result = CURLE_OK;
  while (result == CURLE_OK || (result == CURLE_AGAIN && Await(POLLOUT, milliseconds))) {
    size_t sent = 0;
    result = curl_easy_send(curl_.get(), data.data(), data.size(), &sent);
  }
}

std::string RawConnection::ReadToEnd() {
  std::string text;
  for (;;) {
    char buffer[4096];
    size_t count = 0;
    const CURLcode result = curl_easy_recv(curl_.get(), buffer, sizeof(buffer), &count);
    text.append(buffer, count);
    const bool ended = result == CURLE_AGAIN ? !Await(POLLIN, kDeadline) : result != CURLE_OK || count == 0;
    if (ended) return text;
  }
}
