// What one client sends, or does not send, and the others.
#include "HttpsServer.h"

#include <deque>

#include "RunningService.h"

namespace {

class HttpsServerTest : public RunningService {};

TEST_F(HttpsServerTest, EndsStalledClientsAndServesOthersMeanwhile) {
  options_.server.connections = 40;
  options_.server.first = options_.server.idle = std::chrono::seconds(1);
  Restart();
  LogIn();
  const std::string film = FormText({{"Filedata", "vvvv", "film.mp4"}});
  std::deque<Connection> stalled;
  for (int i = 0; i < 15; ++i) {
    stalled.emplace_back(Url("acme", ""), service_->AuthorityFile()).Send("GET / HTTP/1.1\r\nX");
    stalled.push_back(client_.Begin("POST", UploadUrl(), kFormType + "Content-Length: 1000000\r\n", film));
  }
  // Without a handshake, or with the beginning of one: all places are taken, and the backlog is full of such clients.
  for (int i = 0; i < 100; ++i) {
    stalled.emplace_back("http://127.0.0.1:" + std::to_string(service_->Port())).Send(i % 2 == 0 ? "" : "\x16\x03\x01");
  }
  EXPECT_EQ(client_.PostForm(UploadUrl(), UploadParts(LogIn())).Root()["status"], "success");
  for (Connection& connection : stalled) EXPECT_NE(connection.ReadToEnd().status, 200);
  EXPECT_TRUE(Eventually([&] { return NothingIsComing(); }));
}

}  // namespace
