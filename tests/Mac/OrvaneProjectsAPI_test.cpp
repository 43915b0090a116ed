#include "OrvaneProjectsAPI.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

#include "ScriptedServer.h"
#include "TemporaryFolder.h"
#include "TransferRedirect.h"
#include "WorkflowState.h"

namespace {

using orvane_test::Request;
using orvane_test::Response;
using orvane_test::ScriptedServer;
using orvane_test::TextResponse;
using orvane_test::TransferRedirect;

constexpr const char* kLoginTarget = "/api/prjacc/prjacc";
constexpr const char* kToken = R"({"root":{"status":"success","payload":{"token":"T1","user":"x"}}})";

std::string KeyAnswer(const std::string& version) {
  return R"({"root":{"status":"success",)" + version + R"("auth_key":"K1"}})";
}

class OrvaneProjectsAPITest : public testing::Test {
 protected:
  // What the two steps of the login answer.
  void AnswerLogin(const std::string& key, const std::string& token) {
    server_.Route(kLoginTarget,
                  [key, token](const Request& request) { return TextResponse(request.method == "GET" ? key : token); });
  }

  std::string Login() { return api_.login("acme", "jane", "secret"); }

  // The target of the request that a listing makes now.
  Request ListProjects() {
    api_.getProjectList();
    return server_.Requests().back();
  }

  ScriptedServer server_;
  TransferRedirect redirect_{server_};
  OrvaneProjectsAPI api_;
};

TEST_F(OrvaneProjectsAPITest, LoginGetsAKeyAndThenATokenForCredentialsAsTyped) {
  AnswerLogin(KeyAnswer(R"("apiver":"3",)"), kToken);
  testing::internal::CaptureStdout();
  EXPECT_EQ(api_.login("acme", "j\xC3\xB6rg@x.org", "a&b=c %41+"), "success");
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "orvanevorrel: doing auth step 1\norvanevorrel: doing auth step 2\n");
  const std::vector<Request> requests = server_.Requests();
  ASSERT_EQ(requests.size(), 2u);
  EXPECT_EQ(requests[0].method, "GET");
  EXPECT_EQ(requests[0].target, kLoginTarget);
  EXPECT_EQ(requests[0].Header("host"), "acme.orvane.localhost:48443");
  EXPECT_EQ(requests[1].method, "POST");
  EXPECT_EQ(requests[1].target, kLoginTarget);
  EXPECT_EQ(requests[1].body, "auth_key=K1&username=j\xC3\xB6rg@x.org&password=a&b=c %41+");
  EXPECT_EQ(ListProjects().body, "auth_token=T1&auth_key=K1");
  EXPECT_EQ(requests[1].clientPort, requests[0].clientPort);
}

TEST_F(OrvaneProjectsAPITest, OnlyVersionThreeIsAddressedUnderThePlainPath) {
  const std::pair<const char*, const char*> cases[] = {
      {R"("apiver":"3",)", "/api/prjacc/get_project_list"},
      {R"("apiver":"2",)", "/v3/api/prjacc/get_project_list"},
      {R"("apiver":"4",)", "/v3/api/prjacc/get_project_list"},
      {R"("apiver":"",)", "/v3/api/prjacc/get_project_list"},
      {"", "/v3/api/prjacc/get_project_list"},
      {R"("apiver":"3",)", "/api/prjacc/get_project_list"},
  };
  for (const auto& [version, target] : cases) {
    AnswerLogin(KeyAnswer(version), kToken);
    EXPECT_EQ(Login(), "success") << version;
    EXPECT_EQ(server_.Requests().back().target, kLoginTarget) << version;
    EXPECT_EQ(ListProjects().target, target) << version;
  }
}

TEST_F(OrvaneProjectsAPITest, ARefusalIsTheAnswerItselfAndKeepsTheOldToken) {
  AnswerLogin(KeyAnswer(R"("apiver":"3",)"), kToken);
  EXPECT_EQ(Login(), "success");
  const std::string refusal = " {\"root\" : {\"status\":\"fail\", \"message\":\"no \\u00e9\"}}\n";
  AnswerLogin(R"({"root":{"status":"success","apiver":"2","auth_key":"K2"}})", refusal);
  EXPECT_EQ(api_.login("other", "joe", "wrong"), refusal);
  const std::string longRefusal = refusal + std::string(3 * 1024 * 1024, ' ');
  AnswerLogin(KeyAnswer(R"("apiver":"2",)"), longRefusal);
  EXPECT_EQ(api_.login("other", "joe", "wrong"), longRefusal);
  const Request request = ListProjects();
  EXPECT_EQ(request.body, "auth_token=T1&auth_key=K1");
  EXPECT_EQ(request.target, "/v3/api/prjacc/get_project_list");
  EXPECT_EQ(request.Header("host"), "other.orvane.localhost:48443");
}

TEST_F(OrvaneProjectsAPITest, AnUnknownSubdomainFailsBeforeAnyCredentialsAreSent) {
  AnswerLogin(R"({"root":{"status":"unknown"}})", kToken);
  EXPECT_EQ(Login(), "failed");
  EXPECT_EQ(server_.Requests().size(), 1u);
}

TEST_F(OrvaneProjectsAPITest, LoginThrowsOnAnswersOfAnotherShape) {
  const auto messageOf = [this](const std::string& key, const std::string& token) {
    AnswerLogin(key, token);
    try {
      return Login();
    } catch (const std::runtime_error& error) {
      return std::string(error.what());
    }
  };
  const std::string key = KeyAnswer(R"("apiver":"3",)");
  const std::string object = "json mValueType==ObjectVal required";
  const std::string string = "json mValueType==StringVal required";
  EXPECT_EQ(messageOf("<!DOCTYPE html><h1>Welcome to our WiFi</h1>", kToken), object);
  EXPECT_EQ(messageOf("", kToken), object);
  EXPECT_EQ(messageOf("{}", kToken), object);
  EXPECT_EQ(messageOf(R"({"root":{}})", kToken), string);
  EXPECT_EQ(messageOf(R"({"root":{"status":1}})", kToken), string);
  EXPECT_EQ(messageOf(R"({"root":{"status":"success","apiver":3,"auth_key":"K"}})", kToken), string);
  EXPECT_EQ(messageOf(R"({"root":{"status":"success","apiver":"3"}})", kToken), string);
  EXPECT_EQ(messageOf(key, "<html>"), object);
  EXPECT_EQ(messageOf(key, R"({"root":{"status":"success"}})"), object);
  EXPECT_EQ(messageOf(key, R"({"root":{"status":"success","payload":{}}})"), string);
  // Longer than any answer of a log-in.
  const std::string blanks(1024 * 1024, ' ');
  EXPECT_EQ(messageOf(key + blanks, kToken), object);
  AnswerLogin(R"({"root":[})", kToken);
  EXPECT_THROW(Login(), std::out_of_range);
}

TEST_F(OrvaneProjectsAPITest, ListsPutTheProjectIntoThePathAndTheFolderIntoTheBody) {
  AnswerLogin(KeyAnswer(""), kToken);
  ASSERT_EQ(Login(), "success");
  server_.RouteOthers([](const Request& request) { return TextResponse("answer to " + request.target, 500); });
  EXPECT_EQ(api_.getFolders("12"), "answer to /v3/api/prjacc/get_folders/12");
  EXPECT_EQ(server_.Requests().back().body, "auth_token=T1&auth_key=K1");
  EXPECT_EQ(api_.getFolders(""), "answer to /v3/api/prjacc/get_folders/");
  EXPECT_EQ(api_.getFolders("a/b?c=d&e"), "answer to /v3/api/prjacc/get_folders/a/b?c=d&e");
  EXPECT_EQ(api_.getSubfolders("12", "3&4"), "answer to /v3/api/prjacc/get_folders/12");
  EXPECT_EQ(server_.Requests().back().body, "auth_token=T1&auth_key=K1&folder_id=3&4");
  EXPECT_EQ(api_.getProjectList(), "answer to /v3/api/prjacc/get_project_list");
  EXPECT_EQ(server_.Requests().back().method, "POST");
}

TEST_F(OrvaneProjectsAPITest, UploadGoesWhereTheWorkflowSays) {
  AnswerLogin(KeyAnswer(R"("apiver":"3",)"), kToken);
  ASSERT_EQ(Login(), "success");
  const TemporaryFolder folder;
  const std::string file = folder / "film.mp4";
  WriteFile(file, "movie");
  server_.RouteOthers([](const Request& request) { return TextResponse(request.target); });
  g_prj = "77";
  g_fld = "5";
  EXPECT_EQ(api_.uploadFile("ignored", "ignored", file), "/api/prjacc/upload_file/77");
  const auto parts = server_.Requests().back().parts;
  EXPECT_EQ(parts.at(1).content + " " + parts.at(2).content + " " + parts.at(3).content, "T1 K1 5");
  g_prj.clear();
  EXPECT_EQ(api_.uploadFile("ignored", "ignored", file), "/api/prjacc/upload_file/");
  std::filesystem::remove(file);
  const size_t requests = server_.Requests().size();
  EXPECT_EQ(api_.uploadFile("ignored", "ignored", file), "error");
  EXPECT_EQ(server_.Requests().size(), requests);
  g_fld.clear();
}

TEST_F(OrvaneProjectsAPITest, VersionCheckGivesTheFileAsItIs) {
  server_.Route("/downloads/vorrel-premiere/version.txt", TextResponse("1.1\n"));
  EXPECT_EQ(api_.versionCheck(), "1.1\n");
  EXPECT_EQ(server_.Requests().back().Header("host"), "www.orvane.localhost:48443");
}

}  // namespace
