// What one client sends, or does not send, and the others.
#include "HttpsServer.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

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

// A connection that says these bytes instead of a TLS handshake, and nothing more.
class SilentClient {
 public:
  SilentClient(int port, const std::string& greeting) : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0) << strerror(errno);
    EXPECT_EQ(send(socket_, greeting.data(), greeting.size(), MSG_NOSIGNAL), static_cast<ssize_t>(greeting.size()));
  }
  ~SilentClient() { close(socket_); }
  SilentClient(const SilentClient&) = delete;
  SilentClient& operator=(const SilentClient&) = delete;

 private:
  const int socket_;
};

constexpr const char* kTlsGreeting = "\x16\x03\x01\x02";
const std::string kHost = "Host: acme.orvane.localhost\r\n";
const std::string kUpload =
    "POST /api/prjacc/upload_file/1 HTTP/1.1\r\n" + kHost +
    "Content-Type: multipart/form-data; boundary=xyz\r\nContent-Length: 1000000\r\n\r\n--xyz\r\n"
    "Content-Disposition: form-data; name=\"Filedata\"; filename=\"film.mp4\"\r\n\r\n";

class HttpsServerTest : public RunningService {
 protected:
  RawConnection Connect() const { return {Url("acme", ""), service_->AuthorityFile()}; }

  // Everything that the service answers to these bytes.
  std::string Answer(const std::string& bytes) const {
    RawConnection connection = Connect();
    connection.Send(bytes);
    return connection.ReadToEnd();
  }
};

TEST_F(HttpsServerTest, NeitherAnswersNorEndsAtWhatIsNoRequest) {
  const std::string post = "POST /api/prjacc/prjacc HTTP/1.1\r\n" + kHost;
  const std::string hidden = "GET /hidden HTTP/1.1\r\n" + kHost + "\r\n";
  std::string headers;
  for (int i = 0; i < 20000; ++i) headers += "X-" + std::to_string(i) + ": y\r\n";
  for (const std::string& bytes :
       {post + "Content-Length: -1\r\n\r\n" + hidden, post + "Content-Length: 99999999999999999999999\r\n\r\n" + hidden,
        post + "Transfer-Encoding: chunked\r\n\r\nzz\r\n" + hidden,
        post + "Transfer-Encoding: chunked\r\n\r\n" + std::string(100000, '0') + "1\r\n",
        post + "Content-Length: 3\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n" + hidden,
        std::string("GET / HTTP/1.1\r\n\r\n"), "GET /" + std::string(1000000, 'a') + " HTTP/1.1\r\n" + kHost + "\r\n",
        "GET / HTTP/1.1\r\n" + kHost + "X: " + std::string(1000000, 'a') + "\r\n\r\n",
        "GET / HTTP/1.1\r\n" + kHost + headers + "\r\n", std::string(100000, '\0')}) {
    SCOPED_TRACE(bytes.substr(0, 120));
    const std::string answer = Answer(bytes);
    EXPECT_EQ(answer.find("HTTP/1.1 2"), answer.npos) << answer.substr(0, 200);
    EXPECT_EQ(answer.find("nothing at this address"), answer.npos) << "a request that was hidden is answered";
  }
  EXPECT_EQ(client_.Get(Url("www", "/")).status, 200);
}

TEST_F(HttpsServerTest, EndsStalledClientsAndServesOthersMeanwhile) {
  options_.server.connections = 40;
  options_.server.first = options_.server.idle = seconds(1);
  Restart();
  LogIn();
  std::deque<SilentClient> silent;
  std::deque<RawConnection> stalled;
  for (int i = 0; i < 30; ++i) stalled.push_back(Connect());
  for (int i = 0; i < 30; ++i) stalled[static_cast<size_t>(i)].Send(i % 2 == 0 ? "GET / HTTP/1.1\r\nX" : kUpload + "v");
  for (int i = 0; i < 100; ++i) silent.emplace_back(service_->Port(), i % 2 == 0 ? "" : kTlsGreeting);
  // All places are taken, and the backlog is full of such clients; each place is free again after a second.
  const auto begin = steady_clock::now();
  EXPECT_EQ(client_.PostForm(UploadUrl(), UploadParts(LogIn())).Root()["status"], "success");
  EXPECT_LT(steady_clock::now() - begin, seconds(15));
  for (RawConnection& connection : stalled) EXPECT_EQ(connection.ReadToEnd().find("HTTP/1.1 2"), std::string::npos);
  EXPECT_TRUE(Eventually([&] { return Entries(data_ / "incoming").empty(); }));
}

// A server with answers that the tests hold back.
class HeldServerTest : public RunningService {
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
      if (path_ != "/held" && path_ != "/") throw std::bad_alloc();
      std::unique_lock<std::mutex> lock(test_.mutex_);
      if (path_ == "/held") ++test_.holding_;
      test_.released_.wait(lock, [this] { return path_ == "/" || test_.release_; });
      return {200, "answer", "text/plain"};
    }

   private:
    HeldServerTest& test_;
    const std::string path_;
  };

  HeldServerTest() : authority_(folder_.Path() / "ca") {
    server_ = std::make_unique<HttpsServer>(
        authority_.MakeServerIdentity(),
        [this](const Request& request) { return std::make_unique<Visit>(*this, request); },
        orvane_service::ServerLimits(), [this](const std::string&) { ++faults_; });
    server_->Start(0);
  }

  std::string Url(const std::string& path) const {
    return "https://www.orvane.localhost:" + std::to_string(server_->Port()) + path;
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

  orvane_service::CertificateAuthority authority_;
  std::atomic<int> faults_{0};
  std::mutex mutex_;
  std::condition_variable released_;
  bool release_ = false;
  int holding_ = 0;
  std::unique_ptr<HttpsServer> server_;
};

TEST_F(HeldServerTest, OutlivesWhatIsThrown) {
  const HttpsClient client(authority_.Files().certificate);
  for (const char* path : {"/open", "/receive", "/answer", "/apart"}) {
    EXPECT_EQ(client.Post(Url(path), "body").status, -1) << path;
    EXPECT_EQ(client.Get(Url("/")).body, "answer") << path;
  }
  EXPECT_EQ(faults_, 4);
}

TEST_F(HeldServerTest, AnswersThatWaitKeepNobodyOut) {
  const HttpsClient client(authority_.Files().certificate);
  std::vector<std::thread> waiting;
  std::atomic<int> answered{0};
  for (int i = 0; i < 20; ++i) {
    waiting.emplace_back([&] { answered += client.Get(Url("/held")).status == 200 ? 1 : 0; });
  }
  EXPECT_TRUE(IsHolding(20));
  EXPECT_EQ(client.Get(Url("/")).status, 200);
  EXPECT_EQ(answered, 0);
  Release();
  for (std::thread& thread : waiting) thread.join();
  EXPECT_EQ(answered, 20);
}

// The client goes on sending, which nobody takes while its answer waits: it is stuck, and hears of the end all the
// same.
TEST_F(HeldServerTest, StoppingTellsClientsAtOnce) {
  RawConnection connection(Url(""), authority_.Files().certificate);
  connection.Send("GET /held HTTP/1.1\r\nHost: www.orvane.localhost\r\n\r\n");
  ASSERT_TRUE(IsHolding(1));
  connection.SendUntilStuck(200);
  std::thread stopping([this] { server_->Stop(); });
  const auto begin = steady_clock::now();
  connection.SendUntilStuck(20000);
  EXPECT_LT(steady_clock::now() - begin, seconds(1));
  Release();
  stopping.join();
}

}  // namespace
