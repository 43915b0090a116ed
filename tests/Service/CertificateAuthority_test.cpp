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

  // Whether a client that trusts the authority talks to a server of this identity under the given host name.
  static bool IsTrusted(const Identity& identity, const std::string& host, const fs::path& authority) {
    HttpsServer server(identity);
    server.Get("/", [](const httplib::Request&, httplib::Response&) {});
    const int port = server.Start(0);
    return HttpsClient(authority).Get("https://" + host + ":" + std::to_string(port) + "/").status == 200;
  }

  TemporaryFolder folder_;
  int64_t now_ = orvane_service::SystemTime();
};

TEST_F(CertificateAuthorityTest, IsTrustedForItsOwnDomainOnly) {
  CertificateAuthority authority = Open();
  const fs::path& file = authority.CertificateFile();
  EXPECT_TRUE(IsTrusted(authority.ServerIdentity(), "acme.orvane.localhost", file));
  EXPECT_FALSE(IsTrusted(authority.ServerIdentity(), "a.b.orvane.localhost", file));
  // Certificates that are right in every way but that this authority may not sign.
  EXPECT_TRUE(
      IsTrusted(authority.Sign("deep", {"DNS:deep.er.orvane.localhost"}, 10), "deep.er.orvane.localhost", file));
  for (const std::string host : {"example.com", "localhost", "evil-orvane.localhost", "orvane.localhost.example.com"}) {
    EXPECT_FALSE(IsTrusted(authority.Sign("other", {"DNS:" + host}, 10), host, file)) << host;
  }
  EXPECT_FALSE(IsTrusted(authority.Sign("address", {"IP:127.0.0.1"}, 10), "127.0.0.1", file));
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
  EXPECT_NE(server(), first);
}

TEST_F(CertificateAuthorityTest, KeysAreTheOwnersAndALostOneIsReported) {
  Open().ServerIdentity();
  for (const char* name : {"ca/ca.key", "ca/server.key"}) {
    EXPECT_EQ(fs::status(folder_ / name).permissions(), fs::perms::owner_read | fs::perms::owner_write) << name;
  }
  fs::remove(folder_ / "ca/ca.key");
  EXPECT_THROW(Open(), std::runtime_error);
}

}  // namespace
