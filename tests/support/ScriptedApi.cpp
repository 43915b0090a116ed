#include "ScriptedApi.h"

namespace window_test {

using orvane_test::Request;
using orvane_test::Response;
using orvane_test::TextResponse;

namespace {

Response LogIn(const Request& request) {
  if (request.method == "GET") {
    return TextResponse(R"({"root":{"status":"success","apiver":"3","auth_key":"key"}})");
  }
  if (request.body == "auth_key=key&username=editor&password=secret") {
    return TextResponse(ScriptedApi::Success(R"({"token":"token"})"));
  }
  return TextResponse(ScriptedApi::Refusal("Unknown user or wrong password."));
}

// The folders of project 1: A holds B, which holds C; then D.
Response ListFolders(const Request& request) {
  const size_t at = request.body.find("&folder_id=");
  const std::string folder = at == std::string::npos ? "" : request.body.substr(at + 11);
  if (folder.empty()) {
    return TextResponse(
        ScriptedApi::Success(R"([{"id":"10","name":"A","sub_folders":1},{"id":"13","name":"D","sub_folders":0}])"));
  }
  if (folder == "10") return TextResponse(ScriptedApi::Success(R"([{"id":"11","name":"B","sub_folders":1}])"));
  if (folder == "11") return TextResponse(ScriptedApi::Success(R"([{"id":"12","name":"C","sub_folders":0}])"));
  return TextResponse(ScriptedApi::Refusal("Unknown folder."));
}

}  // namespace

ScriptedApi::ScriptedApi() : redirect_(server_) {
  server_.Route(kStep, LogIn);
  server_.Route(kVersion, TextResponse("1.1"));
  Answer(kProjects, Success(R"([{"id":"1","project_name":"Feature"},{"id":"2","project_name":"Trailer"}])"));
  server_.Route(std::string(kFolders) + "1", ListFolders);
  Answer(std::string(kFolders) + "2", Success("[]"));
  Answer(std::string(kUpload) + "1", Success(R"({"link":"https://acme.orvane.localhost/review/7"})"));
}

std::vector<Request> ScriptedApi::RequestsFor(const std::string& target) const {
  std::vector<Request> found;
  for (const Request& request : server_.Requests()) {
    if (request.target == target) found.push_back(request);
  }
  return found;
}

std::string ScriptedApi::Success(const std::string& payload) {
  return R"({"root":{"status":"success","payload":)" + payload + "}}";
}

std::string ScriptedApi::Refusal(const std::string& message) {
  return R"({"root":{"status":"error","message":")" + message + R"(","payload":[]}})";
}

}  // namespace window_test
