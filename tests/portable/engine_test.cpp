// The service client against a review service in another process, whose port, authority and user's password are in
// ORVANE_TEST_PORT, ORVANE_TEST_AUTHORITY and the file ORVANE_TEST_PASSWORD_FILE.
#include <curl/curl.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "LocalTrust.h"
#include "OrvaneProjectsAPI.h"
#include "TemporaryFolder.h"
#include "WorkflowState.h"
#include "json.h"

namespace {

std::string Told(const char* name) {
  const char* text = std::getenv(name);
  if (!text) throw std::runtime_error(std::string(name) + " is not set");
  return text;
}

double sent = 0;

class Engine : public testing::Test {
 protected:
  Engine() {
    orvane_host::SetTrustedAuthority(Told("ORVANE_TEST_AUTHORITY"));
    orvane_host::SetConnectPort(std::stoi(Told("ORVANE_TEST_PORT")));
  }

  const std::string password_ = ReadFile(Told("ORVANE_TEST_PASSWORD_FILE"));
  OrvaneProjectsAPI api_;
};

std::string StatusIn(const std::string& answer) {
  const json::Value parsed = json::Deserialize(answer);
  return parsed["root"]["status"].ToString();
}

// The id of the first project or folder in the answer.
std::string FirstId(const std::string& answer) {
  const json::Value parsed = json::Deserialize(answer);
  return parsed["root"]["payload"][size_t{0}]["id"].ToString();
}

}  // namespace

TEST_F(Engine, ToldWhyALogInIsRefused) {
  EXPECT_EQ(api_.login("nobody", "editor", password_), "failed");
  const std::string refusal = api_.login("acme", "editor", password_ + "x");
  EXPECT_NE(refusal, "failed");
  EXPECT_NE(refusal, "success");
}

TEST_F(Engine, ListsAndUploads) {
  ASSERT_EQ(api_.login("acme", "editor", password_), "success");
  const TemporaryFolder folder;
  const std::string film = folder / "film.mp4";
  WriteFile(film, std::string(3000000, 'f'));
  g_prj = FirstId(api_.getProjectList());
  g_fld = FirstId(api_.getFolders(g_prj));
  g_title = "Größe & Schnitt";
  g_tags = {"one", "two"};
  g_pUpdFunc = [](double, double now) { sent = now; };
  EXPECT_EQ(StatusIn(api_.uploadFile(g_prj, g_fld, film)), "success");
  EXPECT_GT(sent, 3000000);
  EXPECT_EQ(api_.uploadFile(g_prj, g_fld, folder / "missing"), "error");
}

TEST_F(Engine, ReadsTheNewestVersion) {
  EXPECT_EQ(api_.versionCheck(), "1.1");
}
