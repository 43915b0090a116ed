// The lists of projects and folders are read in ExportController_test, too.
#include <map>
#include <tuple>

#include "RunningService.h"

namespace {

class ApiTest : public RunningService {
 protected:
  Reply PostApi(const std::string& call, const std::string& body) const {
    return client_.Post(Url("acme", "/api/prjacc" + call), body);
  }

  static std::string LogInBody(const std::string& key) {
    return "auth_key=" + key + "&username=editor&password=" + kPassword;
  }
};

TEST_F(ApiTest, LogsInAndListsUnderTheVersionOfTheCustomer) {
  const std::string old = "/v3/api/prjacc/", recent = "/api/prjacc/";
  for (const auto& [customer, version, base, wrong] :
       {std::tuple("acme", "3", recent, old), std::tuple("nordlicht", "2", old, recent)}) {
    EXPECT_EQ(client_.Get(Url(customer, "/api/prjacc/prjacc")).Root()["apiver"], version);
    const std::string body = LogIn(customer).Body();
    EXPECT_EQ(client_.Post(Url(customer, base + "get_project_list"), body).Root()["payload"].size(), 3u);
    ExpectRefused(client_.Post(Url(customer, wrong + "get_project_list"), body), 404);
    ExpectRefused(client_.Post(Url(customer, wrong + "get_folders/1"), body), 404);
  }
}

TEST_F(ApiTest, RefusesLoginsThatAreWrong) {
  ExpectRefused(client_.Get(Url("nobody", "/api/prjacc/prjacc")), 404);
  const std::string key = LogIn().key, injected = "auth_key=" + key + "&username=' OR 1=1 --&password=" + kPassword;
  for (const std::string& body : {std::string(), LogInBody(key) + "!", "auth_key=" + key + "&username=editor&password=",
                                  injected, LogInBody(LogIn("nordlicht").key), LogInBody("")}) {
    SCOPED_TRACE(body);
    ExpectRefused(PostApi("/prjacc", body), 403);
  }
  // A mistyped password does not spend the key.
  EXPECT_EQ(PostApi("/prjacc", LogInBody(key)).status, 200);
}

TEST_F(ApiTest, KeysAndTokensExpireAndAreReplaced) {
  const std::string unused = LogInBody(client_.Get(Url("acme", "/api/prjacc/prjacc")).Root()["auth_key"]);
  const Login first = LogIn();
  const Login second = {first.key, PostApi("/prjacc", LogInBody(first.key)).Root()["payload"]["token"]};
  ExpectRefused(PostApi("/get_project_list", first.Body()), 403);
  now_ += orvane_service::kKeyLifetime;
  ExpectRefused(PostApi("/prjacc", unused), 403);
  EXPECT_EQ(PostApi("/get_project_list", second.Body()).status, 200);
  now_ += orvane_service::kTokenLifetime - orvane_service::kKeyLifetime;
  ExpectRefused(PostApi("/get_project_list", second.Body()), 403);
}

TEST_F(ApiTest, RefusesProjectsAndFoldersThatAreNotTheCallers) {
  const std::string body = LogIn().Body();
  // The fourth project is the other customer's.
  for (const char* project : {"4", "99999999999999999999999", "1x", "%2e%2e", ""}) {
    ExpectRefused(PostApi(std::string("/get_folders/") + project, body), 404);
  }
  ExpectRefused(PostApi("/get_folders/1", body + "&folder_id=1 OR 1=1"), 404);
  ExpectRefused(PostApi("/get_folders/2", body + "&folder_id=1"), 404);  // folder 1 is in project 1
}

TEST_F(ApiTest, AnswersUnknownCallsAndOversizedFormsInItsOwnShape) {
  ExpectRefused(PostApi("/delete_everything", ""), 404);
  ExpectRefused(PostApi("/prjacc", "auth_key=" + std::string(100000, 'k')), 413);
}

TEST(FieldsTest, AreReadAsThePlugInSendsThem) {
  const std::map<std::string, std::string> fields = {
      {"username", "a=b=="}, {"password", "J\xC3\xB6rg 7%\""}, {"folder_id", ""}, {"plus", "1 2&"}, {"", "x"}};
  EXPECT_EQ(orvane_service::ParseFields("username=a=b==&password=J\xC3\xB6rg 7%\"&folder_id=&plus=1+2%26&=x"), fields);
}

}  // namespace
