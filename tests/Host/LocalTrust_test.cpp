#include "LocalTrust.h"

#include <curl/curl.h>
#include <gtest/gtest.h>

#include "ScriptedServer.h"

namespace orvane_host {
namespace {

using orvane_test::ScriptedServer;

size_t Discard(char*, size_t size, size_t count, void*) {
  return size * count;
}

CURLcode Get(const char* url) {
  CURL* handle = curl_easy_init();
  curl_easy_setopt(handle, CURLOPT_URL, url);
  curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, Discard);
  curl_easy_setopt(handle, CURLOPT_TIMEOUT, 20L);
  const CURLcode code = curl_easy_perform(handle);
  curl_easy_cleanup(handle);
  return code;
}

TEST(LocalTrustTest, TrustsTheAuthorityButStillChecksTheName) {
  const ScriptedServer server;
  const char* const url = "https://review.orvane.localhost/";
  SetConnectPort(server.port());
  EXPECT_EQ(Get(url), CURLE_PEER_FAILED_VERIFICATION) << "trusted without being told to";
  SetTrustedAuthority(ScriptedServer::AuthorityFile());
  EXPECT_EQ(Get(url), CURLE_OK);
  EXPECT_EQ(Get("https://other.example.test/"), CURLE_PEER_FAILED_VERIFICATION) << "the name was not verified";
  SetTrustedAuthority("");
  EXPECT_EQ(Get(url), CURLE_PEER_FAILED_VERIFICATION) << "the trust outlived its setting";
  SetConnectPort(0);
  EXPECT_EQ(Get("https://review.example.test/"), CURLE_COULDNT_RESOLVE_HOST);
}

}  // namespace
}  // namespace orvane_host
