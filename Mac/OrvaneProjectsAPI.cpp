#include "OrvaneProjectsAPI.h"

#include <iostream>

#include "Deployment.h"
#include "WorkflowState.h"
#include "json.h"

namespace {

std::string ApiBaseUrl(const std::string& subdomain, const char* path) {
  return "https://" + subdomain + "." + ORVANE_SERVICE_DOMAIN + path;
}

// A log-in answer has a few hundred bytes. The reader takes twenty times the length of a text in memory.
constexpr size_t kMaxLoginAnswerBytes = 1024 * 1024;

// The answer of a log-in step; null when it is no JSON, or longer than such an answer can be.
json::Value ParseLoginAnswer(const std::string& text) {
  return text.size() > kMaxLoginAnswerBytes ? json::Value() : json::Deserialize(text);
}

// The credentials that every request of a session carries. The service's tokens need no escaping.
std::string SessionBody(const std::string& authToken, const std::string& authKey) {
  return "auth_token=" + authToken + "&auth_key=" + authKey;
}

}  // namespace

OrvaneProjectsAPI::OrvaneProjectsAPI() {
  HttpRequest::init();
}

OrvaneProjectsAPI::~OrvaneProjectsAPI() {
  HttpRequest::cleanup();
}

std::string OrvaneProjectsAPI::login(std::string newSubdomain, std::string newUsername, std::string newPassword) {
  subdomain = newSubdomain;
  username = newUsername;
  password = newPassword;
  apiBaseUrl = ApiBaseUrl(subdomain, "/api/prjacc");
  // Both steps go here, whatever version the first one reports.
  const std::string step_url = apiBaseUrl + "/prjacc";

  std::cout << "orvanevorrel: doing auth step 1\n" << std::flush;
  const std::string key_text = http.get(step_url);
  if (key_text == "error") return "failed";
  json::Value key_answer = ParseLoginAnswer(key_text);
  json::Value& key_root = key_answer["root"];
  const std::string key_status = key_root["status"];
  if (key_status != "success") return "failed";
  // Only a service that says "3" is addressed under the plain path; one that reports no version is not.
  const std::string version = key_root.HasKey("apiver") ? key_root["apiver"].ToString() : std::string();
  if (version != "3") apiBaseUrl = ApiBaseUrl(subdomain, "/v3/api/prjacc");
  authKey = key_root["auth_key"].ToString();

  std::cout << "orvanevorrel: doing auth step 2\n" << std::flush;
  // Sent as typed: the service does not expect these fields escaped.
  const std::string body = "auth_key=" + authKey + "&username=" + username + "&password=" + password;
  const std::string token_text = http.post(step_url, body);
  if (token_text == "error") return "failed";
  if (token_text.size() > kMaxLoginAnswerBytes) return token_text;  // too long for a token, so a refusal
  json::Value token_answer = ParseLoginAnswer(token_text);
  json::Value& token_root = token_answer["root"];
  const std::string token_status = token_root["status"];
  if (token_status != "success") return token_text;
  authToken = token_root["payload"]["token"].ToString();
  return "success";
}

std::string OrvaneProjectsAPI::getProjectList() {
  return http.post(apiBaseUrl + "/get_project_list", SessionBody(authToken, authKey));
}

std::string OrvaneProjectsAPI::getFolders(std::string projectId) {
  return http.post(apiBaseUrl + "/get_folders/" + projectId, SessionBody(authToken, authKey));
}

std::string OrvaneProjectsAPI::getSubfolders(std::string projectId, std::string folderId) {
  return http.post(apiBaseUrl + "/get_folders/" + projectId,
                   SessionBody(authToken, authKey) + "&folder_id=" + folderId);
}

std::string OrvaneProjectsAPI::uploadFile(std::string, std::string, std::string filePath) {
  return http.upload(apiBaseUrl + "/upload_file/" + g_prj, filePath, authToken, authKey, g_fld);
}

std::string OrvaneProjectsAPI::versionCheck() {
  return http.get(std::string("https://") + ORVANE_WEB_HOST + "/downloads/vorrel-premiere/version.txt");
}
