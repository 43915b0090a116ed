// What one client sends, or does not send, and the others.
#include "HttpsServer.h"

#include <condition_variable>
#include <deque>
#include <thread>

#include "RunningService.h"

namespace {

using orvane_service::HttpsServer;
using orvane_service::Request;
using orvane_service::Response;
using std::chrono::seconds;
using std::chrono::steady_clock;

class HttpsServerTest : public RunningService {};

TEST_F(HttpsServerTest, NeitherAnswersNorEndsAtWhatIsNoRequest) {
  const std::string url = Url("acme", "/api/prjacc/prjacc");
  const std::string hidden = "GET /hidden HTTP/1.1\r\nHost: acme.orvane.localhost\r\n\r\n";
  const std::string chunked = "Transfer-Encoding: chunked\r\n";
  std::string headers;
  for (int i = 0; i < 20000; ++i) headers += "X-" + std::to_string(i) + ": y\r\n";
  for (const auto& [header, body] :
       std::map<std::string, std::string>{{"Content-Length: -1\r\n", hidden},
                                          {"Content-Length: 99999999999999999999999\r\n", hidden},
                                          {chunked, "zz\r\n" + hidden},
                                          {"Content-Length: 3\r\n" + chunked, "zz\r\n" + hidden},
                                          {chunked + "X: y\r\n", std::string(100000, '0') + "1\r\n"},
                                          {"X: " + std::string(1000000, 'a') + "\r\n", ""},
                                          {headers, ""}}) {
    SCOPED_TRACE(header.substr(0, 120));
    const Reply reply = client_.Ask("POST", url, header, body);
    EXPECT_NE(reply.status, 200);
    EXPECT_EQ(reply.body.find("nothing at this address"), std::string::npos) << "a request that was hidden is answered";
  }
  EXPECT_EQ(client_.Get(Url("www", "/")).status, 200);
}

TEST_F(HttpsServerTest, EndsStalledClientsAndServesOthersMeanwhile) {
  options_.server.connections = 40;
  options_.server.first = options_.server.idle = seconds(1);
  Restart();
  LogIn();
  const std::string upload = "POST /api/prjacc/upload_file/1 HTTP/1.1\r\nHost: acme.orvane.localhost\r\n" +
                             std::string(kFormType) + "Content-Length: 1000000\r\n\r\n" +
                             FormText({{"Filedata", "vvvv", "film.mp4"}});
  std::deque<Connection> stalled;
  for (int i = 0; i < 30; ++i) {
    stalled.emplace_back(Url("acme", ""), service_->AuthorityFile()).Send(i % 2 == 0 ? "GET / HTTP/1.1\r\nX" : upload);
  }
  // Without a handshake, or with the beginning of one: all places are taken, and the backlog is full of such clients.
  for (int i = 0; i < 100; ++i) {
    stalled.emplace_back("http://127.0.0.1:" + std::to_string(service_->Port())).Send(i % 2 == 0 ? "" : "\x16\x03\x01");
  }
  const auto begin = steady_clock::now();
  EXPECT_EQ(client_.PostForm(UploadUrl(), UploadParts(LogIn())).Root()["status"], "success");
  EXPECT_LT(steady_clock::now() - begin, seconds(15));
  for (Connection& connection : stalled) EXPECT_NE(connection.ReadToEnd().status, 200);
  EXPECT_TRUE(Eventually([&] { return Entries(data_ / "incoming").empty(); }));
}

// A server whose answer to "/held" waits until the test releases it.
class HeldServerTest : public testing::Test {
 protected:
  class Visit : public orvane_service::Exchange {
   public:
    Visit(HeldServerTest& test, const Request& request) : test_(test), path_(request.Path()) {
      if (path_ == "/open") throw std::runtime_error("open");
    }
    bool MayWait() const override { return path_ == "/held" || path_ == "/apart"; }
    void Receive(const char*, size_t) override {
      if (path_ == "/receive") throw std::runtime_error("receive");
    }
    Response Answer() override {
      if (path_ == "/answer" || path_ == "/apart") throw std::bad_alloc();
      std::unique_lock<std::mutex> lock(test_.mutex_);
      if (path_ == "/held") ++test_.holding_;
      test_.released_.wait(lock, [this] { return path_ == "/" || test_.release_; });
      return {200, "answer", "text/plain"};
    }

   private:
    HeldServerTest& test_;
    const std::string path_;
  };

  HeldServerTest() { server_.Start(0); }

  std::string Url(const std::string& path) const {
    return "https://www.orvane.localhost:" + std::to_string(server_.Port()) + path;
  }

  void Release() {
    std::lock_guard<std::mutex> lock(mutex_);
    release_ = true;
    released_.notify_all();
  }

  bool IsHolding(int wanted) {
    return Eventually([&] {
      std::lock_guard<std::mutex> lock(mutex_);
      return holding_ == wanted;
    });
  }

  const TemporaryFolder folder_;
  const orvane_service::CertificateAuthority authority_{folder_.Path()};
  const HttpsClient client_{authority_.Files().certificate};
  std::atomic<int> faults_{0};
  std::mutex mutex_;
  std::condition_variable released_;
  bool release_ = false;
  int holding_ = 0;
  HttpsServer server_{authority_.MakeServerIdentity(),
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
  for (int i = 0; i < 20; ++i)
    waiting.emplace_back([&] { answered += client_.Get(Url("/held")).status == 200 ? 1 : 0; });
  EXPECT_TRUE(IsHolding(20));
  EXPECT_EQ(client_.Get(Url("/")).status, 200);
  EXPECT_EQ(answered, 0);
  Release();
  for (std::thread& thread : waiting) thread.join();
  EXPECT_EQ(answered, 20);
}

// The client goes on sending, which nobody takes while its answer waits: it is stuck, and hears of the end all the
// same.
TEST_F(HeldServerTest, StoppingTellsClientsAtOnce) {
  Connection connection(Url(""), authority_.Files().certificate);
  connection.Send("GET /held HTTP/1.1\r\nHost: www.orvane.localhost\r\n\r\n");
  EXPECT_TRUE(IsHolding(1));
  const std::string more(100 << 20, 'v');
  EXPECT_FALSE(connection.Send(more, 200));
  std::thread stopping([this] { server_.Stop(); });
  const auto begin = steady_clock::now();
  EXPECT_FALSE(connection.Send(more));
  EXPECT_LT(steady_clock::now() - begin, seconds(1));
  Release();
  stopping.join();
}

}  // namespace
