#include "HttpsClient.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <algorithm>
#include <sstream>

nlohmann::json Reply::Root() const {
  const nlohmann::json answer = nlohmann::json::parse(body, nullptr, false);
  if (answer.is_object() && answer.contains("root")) return answer["root"];
  ADD_FAILURE() << "no answer of the API: " << status << ", " << body;
  return {{"status", ""}, {"message", ""}, {"payload", nlohmann::json::array()}};
}

std::string FormText(const Parts& parts) {
  std::string text;
  for (const Part& part : parts) {
    text += "--xyz\r\nContent-Disposition: form-data; name=\"" + part.name + "\"";
    text +=
        (part.file_name.empty() ? "" : "; filename=\"" + part.file_name + "\"") + "\r\n\r\n" + part.content + "\r\n";
  }
  return text;
}

Connection::Connection(const std::string& origin, const std::filesystem::path& authority) {
  curl_easy_setopt(curl_.get(), CURLOPT_URL, origin.c_str());
  if (!authority.empty()) curl_easy_setopt(curl_.get(), CURLOPT_CAINFO, authority.c_str());
  curl_easy_setopt(curl_.get(), CURLOPT_CONNECT_ONLY, 1L);
  EXPECT_EQ(curl_easy_perform(curl_.get()), CURLE_OK);
}

bool Connection::Await(short events, int milliseconds) {
  curl_socket_t socket = -1;
  curl_easy_getinfo(curl_.get(), CURLINFO_ACTIVESOCKET, &socket);
  pollfd entry{socket, events, 0};
  return poll(&entry, 1, milliseconds) > 0;
}

bool Connection::Send(std::string_view data, int milliseconds) {
  while (!data.empty()) {
    size_t sent = 0;
    const CURLcode result = curl_easy_send(curl_.get(), data.data(), data.size(), &sent);
    if (result != CURLE_OK && (result != CURLE_AGAIN || !Await(POLLOUT, milliseconds))) return false;
    data.remove_prefix(sent);
  }
  return true;
}

Reply Connection::ReadToEnd() {
  std::string text;
  for (bool ended = false; !ended;) {
    char buffer[4096];
    size_t count = 0;
    const CURLcode result = curl_easy_recv(curl_.get(), buffer, sizeof(buffer), &count);
    text.append(buffer, count);
    ended = result == CURLE_AGAIN ? !Await(POLLIN, 20000) : result != CURLE_OK || count == 0;
  }
  Reply reply;
  const size_t end = std::min(text.find("\r\n\r\n"), text.size());
  std::istringstream head(text.substr(0, end));
  head.ignore(9) >> reply.status;
  for (std::string name, value; std::getline(head.ignore(text.size(), '\n'), name, ':') && head >> std::ws;) {
    std::getline(head, value, '\r');
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return tolower(c); });
    reply.headers[name] = value;
  }
  if (end < text.size()) reply.body = text.substr(end + 4);
  return reply;
}

Reply HttpsClient::Ask(const std::string& method, const std::string& url, const std::string& headers,
                       const std::string& body) const {
  const size_t path = url.find('/', 8);
  Connection connection(url.substr(0, path), authority_);
  connection.Send(method + " " + url.substr(path) + " HTTP/1.1\r\nHost: " + url.substr(8, path - 8) +
                  "\r\nConnection: close\r\n" + headers + "\r\n" + body);
  return connection.ReadToEnd();
}

Reply HttpsClient::Post(const std::string& url, const std::string& body, const std::string& headers) const {
  return Ask("POST", url, headers + "Content-Length: " + std::to_string(body.size()) + "\r\n", body);
}

Reply HttpsClient::PostForm(const std::string& url, const Parts& parts) const {
  return Post(url, FormText(parts) + kFormEnd, kFormType);
}
