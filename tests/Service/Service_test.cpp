#include <fstream>
#include <thread>

#include "RunningService.h"

namespace {

namespace fs = std::filesystem;

class ServiceTest : public RunningService {};

TEST_F(ServiceTest, ARestartKeepsEverything) {
  const Login login = LogIn();
  const nlohmann::json root = client_.PostForm(UploadUrl(), UploadParts(login, "kept")).Root();
  ASSERT_EQ(root["status"], "success") << root;
  const std::string path = "/review/" + root["payload"]["id"].get<std::string>();
  // What a crash in the middle of an upload leaves.
  std::ofstream(data_ / "incoming" / "0123456789abcdef0123456789abcdef") << "half a film";
  // A client that has logged in may go on, and one that trusts the authority still does.
  Restart();
  EXPECT_EQ(fs::status(data_).permissions(), fs::perms::owner_all);
  EXPECT_EQ(client_.Get(Url("acme", path + "/file")).body, "kept");
  EXPECT_EQ(client_.Post(Url("acme", "/api/prjacc/get_project_list"), login.Body()).Root()["payload"].size(), 3u);
  EXPECT_TRUE(Entries(data_ / "incoming").empty());
}

TEST_F(ServiceTest, TheWebSiteGivesVersionAndInstaller) {
  const std::string installer = Url("www", "/downloads/vorrel-premiere/orvane-vorrel-APP.dmg");
  const std::string version = "/downloads/vorrel-premiere/version.txt";
  EXPECT_EQ(client_.Get(Url("www", version)).body, "1.1");
  EXPECT_EQ(client_.Get(Url("acme", version)).status, 404);
  EXPECT_EQ(client_.Get(installer).status, 404);
  fs::create_directories(data_ / "downloads");
  std::ofstream(data_ / "downloads" / "orvane-vorrel-APP.dmg") << "image";
  EXPECT_EQ(client_.Get(installer).body, "image");
  EXPECT_EQ(client_.Get(Url("www", "/downloads/vorrel-premiere/..%2f..%2forvane.db")).status, 404);
  std::ofstream(data_ / "downloads" / "version.txt") << "1.2\n";
  EXPECT_EQ(client_.Get(Url("www", version)).body, "1.2");
  EXPECT_NE(client_.Get(Url("www", "/")).body.find("version is 1.2."), std::string::npos);
  options_.web_version = "1.3";
  Restart();
  EXPECT_EQ(client_.Get(Url("www", version)).body, "1.3");
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

TEST_F(ServiceTest, ServesManyClientsAtOnce) {
  const Login login = LogIn();
  std::atomic<int> stored{0};
  std::vector<std::thread> clients;
  for (int i = 0; i < 12; ++i) {
    clients.emplace_back([&, content = std::string(300000 + i, static_cast<char>('a' + i))] {
      const nlohmann::json root = client_.PostForm(UploadUrl(), UploadParts(login, content)).Root();
      if (client_.Get(root["payload"].value("link", Url("acme", "/")) + "/file").body == content) ++stored;
    });
  }
  for (std::thread& client : clients) client.join();
  EXPECT_EQ(stored, 12);
}

}  // namespace
