#include <map>

#include "RunningService.h"
#include "Sessions.h"

namespace {

using nlohmann::json;

class ApiTest : public RunningService {
 protected:
  Reply PostApi(const std::string& call, const std::string& body) const {
    return client_.Post(Url("acme", "/api/prjacc" + call), body);
  }
};

TEST_F(ApiTest, LogsInAndListsUnderTheVersionOfTheCustomer) {
  // Customer to the version it reports and the base path of its calls.
  const std::map<std::string, std::pair<std::string, std::string>> customers = {{"acme", {"3", "/api/prjacc"}},
                                                                                {"nordlicht", {"2", "/v3/api/prjacc"}}};
  for (const auto& [subdomain, expected] : customers) {
    SCOPED_TRACE(subdomain);
    const auto& [version, base] = expected;
    EXPECT_EQ(client_.Get(Url(subdomain, "/api/prjacc/prjacc")).Root()["apiver"], version);
    const Login login = LogIn(subdomain);
    EXPECT_EQ(login.key.size(), 32u);
    EXPECT_EQ(login.token.size(), 32u);
    const json projects = client_.Post(Url(subdomain, base + "/get_project_list"), login.Body()).Root();
    EXPECT_EQ(projects["status"], "success");
    ASSERT_EQ(projects["payload"].size(), 3u);
    const std::string other = base == "/api/prjacc" ? "/v3/api/prjacc" : "/api/prjacc";
    ExpectRefused(client_.Post(Url(subdomain, other + "/get_project_list"), login.Body()), 404);
    ExpectRefused(client_.Post(Url(subdomain, other + "/get_folders/1"), login.Body()), 404);
  }
  ExpectRefused(client_.Get(Url("nordlicht", "/v3/api/prjacc/prjacc")), 404);
}

TEST_F(ApiTest, ListsFoldersLevelByLevelWithTheirNamesUnharmed) {
  const Login login = LogIn();
  std::string project;
  const json projects = PostApi("/get_project_list", login.Body()).Root();
  for (const json& entry : projects["payload"]) {
    if (entry["project_name"] == "東京ドキュメンタリー") project = entry["id"];
  }
  ASSERT_NE(project, "");
  std::string folder;
  std::vector<std::string> path;
  for (int level = 0; level < 3; ++level) {
    const std::string parent = folder.empty() ? "" : "&folder_id=" + folder;
    const json payload = PostApi("/get_folders/" + project, login.Body() + parent).Root()["payload"];
    ASSERT_FALSE(payload.empty());
    path.push_back(payload[0]["name"]);
    folder = payload[0]["id"];
    EXPECT_EQ(payload[0]["sub_folders"], level == 2 ? 0 : 1);
  }
  EXPECT_EQ(path, (std::vector<std::string>{"第一話", "編集", "最終版 🎬"}));
  EXPECT_EQ(PostApi("/get_folders/" + project, login.Body() + "&folder_id=" + folder).Root()["payload"], json::array());
}

TEST_F(ApiTest, RefusesLoginsThatAreWrong) {
  ExpectRefused(client_.Get(Url("nobody", "/api/prjacc/prjacc")), 404);
  ExpectRefused(client_.Get(Url("www", "/api/prjacc/prjacc")), 404);
  const std::string key = LogIn().key;
  const std::string foreign_key = LogIn("nordlicht").key;
  const std::string right = std::string("&username=editor&password=") + kPassword;
  const std::vector<std::string> bodies = {"",
                                           "auth_key=" + key + "&username=editor&password=wrong",
                                           "auth_key=" + key + "&username=editor&password=",
                                           "auth_key=" + key + "&username=Editor&password=" + kPassword,
                                           "auth_key=" + key + "&username=' OR 1=1 --&password=" + kPassword,
                                           "auth_key=" + foreign_key + right,
                                           "auth_key=" + right};
  for (const std::string& body : bodies) {
    SCOPED_TRACE(body);
    ExpectRefused(PostApi("/prjacc", body), 403);
  }
  // A mistyped password does not spend the key.
  EXPECT_EQ(PostApi("/prjacc", "auth_key=" + key + right).Root()["status"], "success");
}

TEST_F(ApiTest, RefusesProjectsAndFoldersThatAreNotTheCallers) {
  const Login login = LogIn();
  const json foreign = client_.Post(Url("nordlicht", "/v3/api/prjacc/get_project_list"), LogIn("nordlicht").Body())
                           .Root()["payload"][0]["id"];
  for (const std::string& project :
       {std::string(), std::string("0"), std::string("99999999999999999999999"), std::string("-1"), std::string("1x"),
        std::string("%2e%2e%2f%2e%2e%2fetc"), std::string("1%00"), foreign.get<std::string>()}) {
    SCOPED_TRACE(project);
    ExpectRefused(PostApi("/get_folders/" + project, login.Body()), 404);
  }
  // Folder 1 is in project 1.
  for (const std::string folder : {"", "0", "../", "1 OR 1=1", "4000"}) {
    SCOPED_TRACE(folder);
    ExpectRefused(PostApi("/get_folders/1", login.Body() + "&folder_id=" + folder), 404);
  }
  ExpectRefused(PostApi("/get_folders/2", login.Body() + "&folder_id=1"), 404);
}

TEST_F(ApiTest, AnswersUnknownCallsAndOversizedFormsInItsOwnShape) {
  ExpectRefused(client_.Get(Url("acme", "/api/prjacc/get_project_list")), 404);
  ExpectRefused(PostApi("/delete_everything", ""), 404);
  ExpectRefused(PostApi("/prjacc", "auth_key=" + std::string(10000, 'k')), 413);
  ExpectRefused(PostApi("/prjacc", "auth_key=" + std::string(100000, 'k')), 413);
  // A body without an announced length could go on for ever, a compressed one could unpack to any size.
  for (const std::string header : {"Transfer-Encoding: chunked", "Content-Encoding: br\r\nContent-Length: 10"}) {
    SCOPED_TRACE(header);
    RawConnection connection(Url("acme", ""), service_->AuthorityFile());
    connection.Send("POST /api/prjacc/prjacc HTTP/1.1\r\nHost: acme.orvane.localhost\r\nContent-Type: text/plain\r\n" +
                    header + "\r\n\r\n");
    const std::string answer = connection.ReadToEnd();
    EXPECT_EQ(answer.rfind("HTTP/1.1 41", 0), 0u) << answer;
    EXPECT_NE(answer.find("\"status\":\"error\""), std::string::npos) << answer;
  }
}

}  // namespace
