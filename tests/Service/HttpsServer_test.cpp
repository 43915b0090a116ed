// What one client sends, or does not send, and the others.
#include "HttpsServer.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <deque>
#include <new>
#include <thread>

#include "RunningService.h"

namespace {

using orvane_service::HttpsServer;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

// A connection without TLS, and one that has said the first bytes of its handshake.
class TcpConnection {
 public:
  explicit TcpConnection(int port, const std::string& greeting = "") : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0) << strerror(errno);
    EXPECT_EQ(send(socket_, greeting.data(), greeting.size(), MSG_NOSIGNAL), static_cast<ssize_t>(greeting.size()));
  }
  ~TcpConnection() { close(socket_); }
  TcpConnection(const TcpConnection&) = delete;
  TcpConnection& operator=(const TcpConnection&) = delete;

  /// Sends a byte every 20 ms until the other side ends the connection. Returns how long that took.
  milliseconds Trickle() {
    const auto begin = steady_clock::now();
    char byte = 0;
    while (send(socket_, &byte, 1, MSG_NOSIGNAL) == 1 && recv(socket_, &byte, 1, MSG_DONTWAIT) != 0 &&
           steady_clock::now() - begin < std::chrono::seconds(10)) {
      std::this_thread::sleep_for(milliseconds(20));
    }
    return std::chrono::duration_cast<milliseconds>(steady_clock::now() - begin);
  }

 private:
  const int socket_;
};

constexpr const char* kTlsGreeting = "\x16\x03\x01\x02";
const std::string kHost = "Host: acme.orvane.localhost\r\n";
const std::string kUploadHead =
    "POST /api/prjacc/upload_file/1 HTTP/1.1\r\n" + kHost + "Content-Type: multipart/form-data; boundary=xyz\r\n";
const std::string kFilm = "--xyz\r\nContent-Disposition: form-data; name=\"Filedata\"; filename=\"film.mp4\"\r\n\r\n";

class HttpsServerTest : public RunningService {
 protected:
  std::unique_ptr<RawConnection> Connect() const {
    return std::make_unique<RawConnection>(Url("acme", ""), service_->AuthorityFile());
  }

  // Everything that the service answers to these bytes.
  std::string Answer(const std::string& bytes) const {
    const auto connection = Connect();
    connection->Send(bytes);
    return connection->ReadToEnd();
  }

  // A whole upload as chunks of the given size.
  static std::string InChunks(const std::string& form, size_t size) {
    std::string chunks;
    for (size_t at = 0; at < form.size(); at += size) {
      const std::string chunk = form.substr(at, size);
      char head[32];
      snprintf(head, sizeof(head), "%zx\r\n", chunk.size());
      chunks += head + chunk + "\r\n";
    }
    return chunks + "0\r\n\r\n";
  }

  static std::string WithTrailer(std::string chunks) { return chunks.insert(chunks.size() - 2, "X-Trailer: y\r\n"); }

  std::string Form() const {
    std::string form;
    for (const auto& part : UploadParts(LogIn())) {
      form += "--xyz\r\nContent-Disposition: form-data; name=\"" + part.name + "\"";
      form +=
          (part.filename.empty() ? "" : "; filename=\"" + part.filename + "\"") + "\r\n\r\n" + part.content + "\r\n";
    }
    return form + "--xyz--\r\n";
  }
};

TEST_F(HttpsServerTest, AnswersRequestsThatAreNoneAsTheStandardSays) {
  const std::string login = "POST /api/prjacc/prjacc HTTP/1.1\r\n" + kHost;
  const std::string inner = "GET /hidden HTTP/1.1\r\nHost: acme.orvane.localhost\r\n\r\n";
  const std::pair<std::string, std::string> cases[] = {
      {login + "Content-Length: 0\r\nContent-Length: 55\r\n\r\n" + inner, "400"},
      {login + "Content-Length: 3, 3\r\n\r\nabc", "400"},
      {login + "Content-Length: -1\r\n\r\n", "400"},
      {login + "Content-Length: 99999999999999999999999\r\n\r\n", "413"},
      {login + "Content-Length: 5\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n" + inner, "400"},
      {login + "Transfer-Encoding: gzip, chunked\r\n\r\n", "501"},
      {"POST / HTTP/1.0\r\n" + kHost + "Transfer-Encoding: chunked\r\n\r\n0\r\n\r\n", "400"},
      {login + "Content-Length : 3\r\n\r\nabc", "400"},
      {login + "X: a\r\n Content-Length: 3\r\n\r\nabc", "400"},
      {login + "X: a\nContent-Length: 3\r\n\r\nabc", "400"},
      {"GET / HTTP/1.1\r\n\r\n", "400"},
      {"GET / HTTP/1.1\r\n" + kHost + kHost + "\r\n", "400"},
      {"GET / HTTP/2.0\r\n" + kHost + "\r\n", "505"},
      {"BREW / HTTP/1.1\r\n" + kHost + "\r\n", "501"},
      {"GET / \r\n" + kHost + "\r\n", "400"},
      {"GET /" + std::string(9000, 'a') + " HTTP/1.1\r\n" + kHost + "\r\n", "414"},
      {"GET / HTTP/1.1\r\n" + kHost + "X: " + std::string(1000000, 'a') + "\r\n\r\n", "431"},
      {"GET / HTTP/1.1\r\n" + kHost + "Content-Length: 55\r\n\r\n" + inner, "200"},
      // The longest path that is taken, through every pattern of the service.
      {"POST /v3/api/prjacc/x/" + std::string(7970, 'a') + " HTTP/1.1\r\nConnection: close\r\nContent-Length: 0\r\n" +
           kHost + "\r\n",
       "404"},
      {"GET / HTTP/1.0\r\n" + kHost + "\r\n", "200"}};
  for (const auto& [request, status] : cases) {
    SCOPED_TRACE(request.substr(0, 120));
    const std::string answer = Answer(request);
    EXPECT_EQ(answer.rfind("HTTP/1.1 " + status + " ", 0), 0u) << answer.substr(0, 200);
    EXPECT_EQ(answer.find("HTTP/1.1", 1), answer.npos) << "a request that was hidden is answered: " << answer;
  }
}

TEST_F(HttpsServerTest, AnswersRangesAsTheStandardSays) {
  const nlohmann::json root = client_.PostForm(UploadUrl(), UploadParts(LogIn(), "0123456789")).Root();
  const std::string file = "/review/" + root["payload"]["id"].get<std::string>() + "/file";
  const std::string huge(30, '9');
  const std::pair<std::string, std::string> cases[] = {
      {"bytes=" + huge + "-", "200"}, {"bytes=0-" + huge, "200"}, {"bytes=-0", "416"},
      {"bytes=4-2", "200"},           {"bytes=", "200"},          {"bytes=a-b", "200"},
      {"lines=1-2", "200"},           {"bytes=-", "200"},         {"bytes=1-2", "206"},
      {"bytes=10-", "416"},           {"bytes=0-0,-1", "200"},    {"bytes=" + std::string(60000, '1') + "-", "200"}};
  for (const auto& [range, status] : cases) {
    SCOPED_TRACE(range.substr(0, 40));
    const std::string answer =
        Answer("GET " + file + " HTTP/1.1\r\n" + kHost + "Connection: close\r\nRange: " + range + "\r\n\r\n");
    EXPECT_EQ(answer.rfind("HTTP/1.1 " + status + " ", 0), 0u) << answer.substr(0, 200);
  }
}

TEST_F(HttpsServerTest, TakesFormsInChunksAndNoMalformedOnes) {
  const std::string form = Form();
  const std::string good = InChunks(form, 50);
  std::string sloppy = good;
  sloppy.replace(4 + 50, 2, "..");
  const std::tuple<const char*, std::string, std::string> cases[] = {
      {"good", good, "200"},
      {"extension and trailer", "1;a=\"b\"\r\n-\r\n" + WithTrailer(InChunks(form.substr(1), 7)), "200"},
      {"no end of a chunk", sloppy, "400"},
      {"no number", "zz\r\n" + form, "400"},
      {"negative", "-1\r\n" + form, "400"},
      {"prefix", "0x10\r\n" + form, "400"},
      {"too large", "fffffffffffffffff\r\n" + form, "400"},
      {"a line without end", std::string(100000, '0') + "1\r\n", "400"}};
  for (const auto& [what, body, status] : cases) {
    SCOPED_TRACE(what);
    const std::string answer = Answer(kUploadHead + "Connection: close\r\nTransfer-Encoding: chunked\r\n\r\n" + body);
    EXPECT_EQ(answer.rfind("HTTP/1.1 " + std::string(status) + " ", 0), 0u) << answer.substr(0, 200);
  }
}

TEST_F(HttpsServerTest, EndsEachStageOfASlowClient) {
  options_.server.patience = {milliseconds(400), milliseconds(400), milliseconds(400), milliseconds(400),
                              milliseconds(400)};
  Restart();
  LogIn();
  for (const char* greeting : {"", kTlsGreeting}) {
    const milliseconds took = TcpConnection(service_->Port(), greeting).Trickle();
    EXPECT_LT(took.count(), 4000);
  }
  // Head, small body, and the body of an upload, from which nothing more comes.
  for (const std::string& begun : {std::string("GET / HTTP/1.1\r\nX: "),
                                   "POST /api/prjacc/prjacc HTTP/1.1\r\n" + kHost + "Content-Length: 5000\r\n\r\nauth",
                                   kUploadHead + "Content-Length: 1000000\r\n\r\n" + kFilm + std::string(50000, 'v')}) {
    SCOPED_TRACE(begun.substr(0, 60));
    const auto begin = steady_clock::now();
    const std::string answer = Answer(begun);
    EXPECT_LT(steady_clock::now() - begin, std::chrono::seconds(4));
    EXPECT_EQ(answer.rfind("HTTP/1.1 4", 0), 0u) << answer;
  }
  ExpectNothingStored();
}

// A client that always sends something, but never enough.
TEST_F(HttpsServerTest, EndsATrickle) {
  options_.server.patience.head = options_.server.patience.body = milliseconds(500);
  Restart();
  LogIn();
  for (const std::string& begun :
       {std::string("GET / HTTP/1.1\r\nX: "), kUploadHead + "Content-Length: 1000000\r\n\r\n" + kFilm}) {
    SCOPED_TRACE(begun.substr(0, 60));
    const auto connection = Connect();
    connection->Send(begun);
    const auto begin = steady_clock::now();
    while (connection->TrySend("v") && steady_clock::now() - begin < std::chrono::seconds(8)) {
      std::this_thread::sleep_for(milliseconds(20));
    }
    EXPECT_LT(steady_clock::now() - begin, std::chrono::seconds(6));
  }
}

// The patience is that of a real service: only a place can make the difference.
TEST_F(HttpsServerTest, ServesOthersWhileAllPlacesAreTaken) {
  options_.server.connections = 30;
  Restart();
  LogIn();
  std::deque<TcpConnection> silent;
  std::vector<std::unique_ptr<RawConnection>> slow;
  for (int i = 0; i < 40; ++i) silent.emplace_back(service_->Port(), i % 2 == 0 ? "" : kTlsGreeting);
  for (int i = 0; i < 40; ++i) {
    slow.push_back(Connect());
    slow.back()->Send(i % 2 == 0 ? "GET / HTTP/1.1\r\nX" : kUploadHead + "Content-Length: 1000000\r\n\r\n" + kFilm);
  }
  for (int i = 0; i < 3; ++i) {
    const auto begin = steady_clock::now();
    EXPECT_EQ(client_.PostForm(UploadUrl(), UploadParts(LogIn())).Root()["status"], "success");
    EXPECT_LT(steady_clock::now() - begin, std::chrono::seconds(4));
  }
}

// The stand-alone server, whose handlers are the test's.
TEST_F(HttpsServerTest, OutlivesFaultsAndServesClientsThatCameEarly) {
  orvane_service::CertificateAuthority authority(folder_.Path() / "ca", options_.clock);
  HttpsServer server(authority.ServerIdentity());
  std::atomic<int> faults{0};
  server.SetFaultLog([&](const std::string&) { ++faults; });
  server.Get("/", [](const httplib::Request&, httplib::Response&) {});
  server.set_logger([](const httplib::Request& request, const httplib::Response&) {
    if (request.has_header("X-Fault")) throw std::bad_alloc();
  });
  const std::string url = "https://www.orvane.localhost:" + std::to_string(server.Bind(0)) + "/";
  const HttpsClient client(authority.CertificateFile());
  Reply early;
  std::thread waiting([&] { early = client.Get(url); });
  server.Listen();
  waiting.join();
  EXPECT_EQ(early.status, 200);
  client.Get(url, {{"X-Fault", "1"}});
  EXPECT_EQ(client.Get(url).status, 200);
  EXPECT_EQ(faults, 1);
}

}  // namespace
