// What one client sends, or does not send, and the others.
#include "HttpsServer.h"

#include <deque>
#include <future>

#include "RunningService.h"

namespace {

using orvane_service::Request;
using orvane_service::Response;

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

// A server whose answer to "/held" waits until the test releases it.
class HeldServerTest : public testing::Test {
 protected:
  struct Visit : orvane_service::Exchange {
    Visit(HeldServerTest& held, const Request& request) : test(held), path(request.Path()) { Meet("/open"); }
    bool MayWait() const override { return path == "/held" || path == "/apart"; }
    void Receive(const char*, size_t) override { Meet("/receive"); }
    Response Answer() override {
      Meet("/answer");
      Meet("/apart");
      if (path == "/held") ++test.holding_;
      if (path == "/held") test.released_.wait();
      return {200, "answer", "text/plain"};
    }
    void Meet(const std::string& fault) const {
      if (path == fault) throw std::runtime_error(fault);
    }

    HeldServerTest& test;
    const std::string path;
  };

  HeldServerTest() { server_.Start(0); }

  std::string Url(const std::string& path) const {
    return "https://www.orvane.localhost:" + std::to_string(server_.Port()) + path;
  }

  const TemporaryFolder folder_;
  const orvane_service::CertificateAuthority authority_{folder_.Path()};
  const HttpsClient client_{authority_.Files().certificate};
  std::atomic<int> faults_{0}, holding_{0};
  std::promise<void> release_;
  const std::shared_future<void> released_{release_.get_future()};
  orvane_service::HttpsServer server_{
      authority_.MakeServerIdentity(),
      [this](const Request& request) { return std::make_unique<Visit>(*this, request); },
      orvane_service::ServerLimits(), [this](const std::string&) { ++faults_; }};
};

TEST_F(HeldServerTest, OutlivesWhatIsThrown) {
  for (const char* path : {"/open", "/receive", "/answer", "/apart"}) {
    EXPECT_EQ(client_.Post(Url(path), "body").status, 0) << path;
    EXPECT_EQ(client_.Get(Url("/")).body, "answer") << path;
  }
  EXPECT_EQ(faults_, 4);
}

TEST_F(HeldServerTest, AnswersThatWaitKeepNobodyOut) {
  std::vector<std::thread> waiting;
  std::atomic<int> answered{0};
  const auto ask = [&] { answered += client_.Get(Url("/held")).status == 200 ? 1 : 0; };
  for (int i = 0; i < 20; ++i) waiting.emplace_back(ask);
  EXPECT_TRUE(Eventually([this] { return holding_ == 20; }));
  EXPECT_EQ(client_.Get(Url("/")).status, 200);
  EXPECT_EQ(answered, 0);
  release_.set_value();
  for (std::thread& thread : waiting) thread.join();
  EXPECT_EQ(answered, 20);
}

// The client goes on sending, which nobody takes while its answer waits: it is stuck, and hears of the end all the
// same.
TEST_F(HeldServerTest, StoppingTellsClientsAtOnce) {
  Connection connection(Url(""), authority_.Files().certificate);
  connection.Send("GET /held HTTP/1.1\r\nHost: www.orvane.localhost\r\n\r\n");
  EXPECT_TRUE(Eventually([this] { return holding_ == 1; }));
  const std::string more(100 << 20, 'v');
  EXPECT_FALSE(connection.Send(more, 200));
  std::thread stopping([this] { server_.Stop(); });
  EXPECT_TRUE(Eventually([&] { return connection.Ended(); }));
  release_.set_value();
  stopping.join();
}

}  // namespace
