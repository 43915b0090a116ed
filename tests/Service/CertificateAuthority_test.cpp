#include "CertificateAuthority.h"

#include "HttpsServer.h"
#include "RunningService.h"

namespace {

namespace fs = std::filesystem;
using orvane_service::CertificateAuthority;
using orvane_service::HttpsServer;
using orvane_service::Identity;

constexpr int64_t kDay = 24 * 60 * 60;

class CertificateAuthorityTest : public testing::Test {
 protected:
  CertificateAuthority Open() {
    return CertificateAuthority(folder_.Path() / "ca", [this] { return now_; });
  }

  // Connects to a server that has this identity, under the given host name, and returns libcurl's verdict.
  CURLcode Connect(const Identity& identity, const std::string& host, const fs::path& authority) {
    HttpsServer server(identity);
    server.Get("/",
               [](const httplib::Request&, httplib::Response& response) { response.set_content("ok", "text/plain"); });
    const int port = server.Start(0);
    CURL* curl = curl_easy_init();
    curl_slist* names = curl_slist_append(nullptr, (host + ":" + std::to_string(port) + ":127.0.0.1").c_str());
    const std::string url = "https://" + host + ":" + std::to_string(port) + "/";
    curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
    curl_easy_setopt(curl, CURLOPT_NOBODY, 1L);
    curl_easy_setopt(curl, CURLOPT_RESOLVE, names);
    curl_easy_setopt(curl, CURLOPT_CAINFO, authority.c_str());
    const CURLcode result = curl_easy_perform(curl);
    curl_easy_cleanup(curl);
    curl_slist_free_all(names);
    return result;
  }

  TemporaryFolder folder_;
  int64_t now_ = orvane_service::SystemTime();
};

TEST_F(CertificateAuthorityTest, IsTrustedForItsOwnDomainOnly) {
  CertificateAuthority authority = Open();
  const fs::path& file = authority.CertificateFile();
  const Identity server = authority.ServerIdentity();
  for (const char* host : {"orvane.localhost", "www.orvane.localhost", "acme.orvane.localhost"}) {
    EXPECT_EQ(Connect(server, host, file), CURLE_OK) << host;
  }
  EXPECT_EQ(Connect(server, "a.b.orvane.localhost", file), CURLE_PEER_FAILED_VERIFICATION);
  // Certificates that are right in every way but that this authority may not sign.
  EXPECT_EQ(Connect(authority.Sign("deep", {"DNS:deep.er.orvane.localhost"}, 10), "deep.er.orvane.localhost", file),
            CURLE_OK);
  for (const std::string host : {"example.com", "localhost", "evil-orvane.localhost", "orvane.localhost.example.com"}) {
    EXPECT_EQ(Connect(authority.Sign("other", {"DNS:" + host}, 10), host, file), CURLE_PEER_FAILED_VERIFICATION)
        << host;
  }
  EXPECT_EQ(Connect(authority.Sign("address", {"IP:127.0.0.1"}, 10), "127.0.0.1", file),
            CURLE_PEER_FAILED_VERIFICATION);
}

TEST_F(CertificateAuthorityTest, RenewsTheServersCertificateInTimeAndKeepsItsOwn) {
  const std::string own = ReadFile(Open().CertificateFile());
  const auto server = [&] {
    CertificateAuthority authority = Open();
    EXPECT_EQ(ReadFile(authority.CertificateFile()), own);
    authority.ServerIdentity();
    return ReadFile(folder_ / "ca/server.pem");
  };
  const std::string first = server();
  now_ += (orvane_service::kServerDays - orvane_service::kRenewalDays - 1) * kDay;
  EXPECT_EQ(server(), first);
  now_ += 2 * kDay;
  const std::string second = server();
  EXPECT_NE(second, first);
  // A damaged file, too, is only a reason to make a new one.
  WriteFile(folder_ / "ca/server.key", "nonsense");
  EXPECT_NE(server(), second);
}

TEST_F(CertificateAuthorityTest, KeysAreTheOwnersAndALostOneIsReported) {
  Open().ServerIdentity();
  const fs::path ca = folder_.Path() / "ca";
  for (const char* name : {"ca.key", "server.key"}) {
    EXPECT_EQ(fs::status(ca / name).permissions(), fs::perms::owner_read | fs::perms::owner_write) << name;
  }
  fs::remove(ca / "ca.key");
  EXPECT_THROW(Open(), std::runtime_error);
  fs::remove(ca / "ca.pem");
  EXPECT_EQ(Connect(Open().ServerIdentity(), "www.orvane.localhost", ca / "ca.pem"), CURLE_OK);
}

}  // namespace
