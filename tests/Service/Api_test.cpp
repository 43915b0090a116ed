// The lists of projects and folders are read in ExportController_test, too.
#include <map>

#include "RunningService.h"

namespace {

using nlohmann::json;

class ApiTest : public RunningService {
 protected:
  Reply PostApi(const std::string& call, const std::string& body) const {
    return client_.Post(Url("acme", "/api/prjacc" + call), body);
  }
};

TEST_F(ApiTest, LogsInAndListsUnderTheVersionOfTheCustomer) {
  // Customer to the version it reports, the base path of its calls, and that of the other version.
  const std::map<std::string, std::vector<std::string>> customers = {
      {"acme", {"3", "/api/prjacc", "/v3/api/prjacc"}}, {"nordlicht", {"2", "/v3/api/prjacc", "/api/prjacc"}}};
  for (const auto& [subdomain, expected] : customers) {
    SCOPED_TRACE(subdomain);
    EXPECT_EQ(client_.Get(Url(subdomain, "/api/prjacc/prjacc")).Root()["apiver"], expected[0]);
    const Login login = LogIn(subdomain);
    const json projects = client_.Post(Url(subdomain, expected[1] + "/get_project_list"), login.Body()).Root();
    EXPECT_EQ(projects["payload"].size(), 3u) << projects;
    ExpectRefused(client_.Post(Url(subdomain, expected[2] + "/get_project_list"), login.Body()), 404);
    ExpectRefused(client_.Post(Url(subdomain, expected[2] + "/get_folders/1"), login.Body()), 404);
  }
}

TEST_F(ApiTest, RefusesLoginsThatAreWrong) {
  ExpectRefused(client_.Get(Url("nobody", "/api/prjacc/prjacc")), 404);
  const std::string key = "auth_key=" + LogIn().key;
  const std::string foreign_key = "auth_key=" + LogIn("nordlicht").key;
  const std::string right = std::string("&username=editor&password=") + kPassword;
  for (const std::string& body :
       {std::string(), key + "&username=editor&password=wrong", key + "&username=editor&password=",
        key + "&username=' OR 1=1 --&password=" + kPassword, foreign_key + right, "auth_key=" + right}) {
    SCOPED_TRACE(body);
    ExpectRefused(PostApi("/prjacc", body), 403);
  }
  // A mistyped password does not spend the key.
  EXPECT_EQ(PostApi("/prjacc", key + right).Root()["status"], "success");
}

TEST_F(ApiTest, KeysAndTokensExpireAndAreReplaced) {
  const Login first = LogIn();
  const std::string again = "auth_key=" + first.key + "&username=editor&password=" + kPassword;
  const std::string token = PostApi("/prjacc", again).Root()["payload"]["token"];
  ExpectRefused(PostApi("/get_project_list", first.Body()), 403);
  const std::string second = Login{first.key, token}.Body();
  const std::string unused = client_.Get(Url("acme", "/api/prjacc/prjacc")).Root()["auth_key"];
  now_ += orvane_service::kKeyLifetime;
  ExpectRefused(PostApi("/prjacc", "auth_key=" + unused + "&username=editor&password=" + kPassword), 403);
  EXPECT_EQ(PostApi("/get_project_list", second).status, 200);
  now_ += orvane_service::kTokenLifetime - orvane_service::kKeyLifetime;
  ExpectRefused(PostApi("/get_project_list", second), 403);
}

TEST_F(ApiTest, RefusesProjectsAndFoldersThatAreNotTheCallers) {
  const Login login = LogIn();
  const json foreign = client_.Post(Url("nordlicht", "/v3/api/prjacc/get_project_list"), LogIn("nordlicht").Body())
                           .Root()["payload"][0]["id"];
  for (const std::string& project :
       {foreign.get<std::string>(), std::string("99999999999999999999999"), std::string("1x"), std::string("%2e%2e")}) {
    SCOPED_TRACE(project);
    ExpectRefused(PostApi("/get_folders/" + project, login.Body()), 404);
  }
  ExpectRefused(PostApi("/get_folders/1", login.Body() + "&folder_id=1 OR 1=1"), 404);
  ExpectRefused(PostApi("/get_folders/2", login.Body() + "&folder_id=1"), 404);  // folder 1 is in project 1
}

TEST_F(ApiTest, AnswersUnknownCallsAndOversizedFormsInItsOwnShape) {
  ExpectRefused(PostApi("/delete_everything", ""), 404);
  ExpectRefused(PostApi("/prjacc", "auth_key=" + std::string(100000, 'k')), 413);
  ExpectRefused(PostApi("/prjacc", "auth_key=" + std::string(3000000, 'k')), 413);
}

TEST(FieldsTest, AreReadAsThePlugInSendsThem) {
  auto fields = orvane_service::ParseFields("username=a=b==&password=J\xC3\xB6rg 7%\"&folder_id=&plus=1+2%26&=x&end");
  EXPECT_EQ(fields["username"], "a=b==");
  EXPECT_EQ(fields["password"], "J\xC3\xB6rg 7%\"");
  EXPECT_EQ(fields.count("folder_id"), 1u);
  EXPECT_EQ(fields["plus"], "1 2&");
}

}  // namespace
