#include "Deployment.h"
#include "RunningService.h"

namespace {

class ServiceTest : public RunningService {};

TEST_F(ServiceTest, ARestartKeepsEverything) {
  const Login login = LogIn();
  const nlohmann::json root = client_.PostForm(UploadUrl(), UploadParts(login, "kept")).Root();
  ASSERT_EQ(root["status"], "success") << root;
  const std::string path = "/review/" + root["payload"]["id"].get<std::string>();
  // What a crash in the middle of an upload leaves.
  WriteFile(data_ / "incoming" / "0123456789abcdef0123456789abcdef", "half a film");
  // A client that has logged in may go on, and one that trusts the authority still does.
  Restart();
  EXPECT_EQ(std::filesystem::status(data_).permissions(), std::filesystem::perms::owner_all);
  EXPECT_EQ(client_.Get(Url("acme", path + "/file")).body, "kept");
  EXPECT_EQ(client_.Post(Url("acme", "/api/prjacc/get_project_list"), login.Body()).Root()["payload"].size(), 3u);
  EXPECT_TRUE(NothingIsComing());
}

TEST_F(ServiceTest, TheWebSiteGivesVersionAndInstaller) {
  const std::string folder = "/downloads/vorrel-premiere/", installer = Url("www", folder + "orvane-vorrel-APP.dmg");
  const auto version = [&](const std::string& host) { return client_.Get(Url(host, folder + "version.txt")); };
  EXPECT_EQ(version("www").body, ORVANE_VERSION);
  EXPECT_EQ(version("acme").status, 404);
  EXPECT_EQ(client_.Get(installer).status, 404);
  EXPECT_EQ(client_.Get(Url("www", "/")).body.find("<a "), std::string::npos);
  std::filesystem::create_directories(data_ / "downloads");
  WriteFile(data_ / "downloads" / "orvane-vorrel-APP.dmg", "image");
  EXPECT_EQ(client_.Get(installer).body, "image");
  for (const char* path : {"../../orvane.db", "..%2f..%2forvane.db"}) {
    EXPECT_EQ(client_.Get(Url("www", folder + path)).status, 404);
  }
  WriteFile(data_ / "downloads" / "version.txt", "1.2\n");
  EXPECT_EQ(version("www").body, "1.2");
  EXPECT_NE(client_.Get(Url("www", "/")).body.find("version is 1.2."), std::string::npos);
  options_.web_version = "1.3";
  Restart();
  EXPECT_EQ(version("www").body, "1.3");
}

TEST_F(ServiceTest, SecretsAreNeitherInTheLogNorInTheData) {
  std::string text;
  options_.log = [&text](const std::string& line) { text += line + "\n"; };
  Restart();
  const Login login = LogIn();
  client_.Post(Url("acme", "/api/prjacc/get_project_list?" + login.Body()), login.Body());
  client_.PostForm(UploadUrl(), UploadParts(login));
  service_.reset();
  EXPECT_NE(text.find("POST acme.orvane.localhost:"), std::string::npos) << text;
  EXPECT_NE(text.find("/api/prjacc/get_project_list 200\n"), std::string::npos) << text;
  for (const char* file : {"orvane.db", "orvane.db-wal"}) text += ReadFile(data_ / file);
  for (const std::string& secret : {login.key, login.token, std::string(kPassword)}) {
    EXPECT_EQ(text.find(secret), std::string::npos);
  }
}

}  // namespace
