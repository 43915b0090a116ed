#include "LocalTrust.h"

#include <curl/curl.h>
#include <gtest/gtest.h>

#include <chrono>

#include "ChildProcess.h"
#include "TemporaryFolder.h"

namespace orvane_host {
namespace {

// A TLS server on a free port of 127.0.0.1 with a certificate of its own for review.example.test.
class LocalTrustTest : public testing::Test {
 protected:
  void SetUp() override {
    const ChildResult made = RunChild({"openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout",
                                       folder_ / "key.pem", "-out", folder_ / "certificate.pem", "-subj", "/CN=Test",
                                       "-addext", "subjectAltName=DNS:review.example.test"});
    ASSERT_EQ(made.status, 0) << made.errors;
    server_ = std::make_unique<ChildProcess>(std::vector<std::string>{"openssl", "s_server", "-www", "-accept",
                                                                      "127.0.0.1:0", "-key", folder_ / "key.pem",
                                                                      "-cert", folder_ / "certificate.pem"});
    // It says "ACCEPT 127.0.0.1:PORT" once it listens.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    const std::string before = "ACCEPT 127.0.0.1:";
    std::string output;
    std::string errors;
    while (output.find('\n', output.find(before)) == std::string::npos || output.find(before) == std::string::npos) {
      ASSERT_LT(std::chrono::steady_clock::now(), deadline) << output << errors;
      ASSERT_TRUE(server_->Read(100, output, errors)) << output << errors;
    }
    port_ = std::stoi(output.substr(output.find(before) + before.size()));
  }

  void TearDown() override {
    SetTrustedAuthority("");
    SetConnectPort(0);
  }

  static size_t Discard(char*, size_t size, size_t count, void*) { return size * count; }

  static CURLcode Get(const char* url) {
    CURL* handle = curl_easy_init();
    curl_easy_setopt(handle, CURLOPT_URL, url);
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, Discard);
    curl_easy_setopt(handle, CURLOPT_TIMEOUT, 20L);
    const CURLcode code = curl_easy_perform(handle);
    curl_easy_cleanup(handle);
    return code;
  }

  TemporaryFolder folder_;
  std::unique_ptr<ChildProcess> server_;
  int port_ = 0;
};

TEST_F(LocalTrustTest, TrustsTheAuthorityButStillChecksTheName) {
  SetConnectPort(port_);
  EXPECT_EQ(Get("https://review.example.test/"), CURLE_PEER_FAILED_VERIFICATION) << "trusted without being told to";
  SetTrustedAuthority(folder_ / "certificate.pem");
  EXPECT_EQ(Get("https://review.example.test/"), CURLE_OK);
  EXPECT_EQ(Get("https://other.example.test/"), CURLE_PEER_FAILED_VERIFICATION) << "the name was not verified";
  SetTrustedAuthority("");
  EXPECT_EQ(Get("https://review.example.test/"), CURLE_PEER_FAILED_VERIFICATION) << "the trust outlived its setting";
  SetConnectPort(0);
  EXPECT_EQ(Get("https://review.example.test/"), CURLE_COULDNT_RESOLVE_HOST);
}

}  // namespace
}  // namespace orvane_host
