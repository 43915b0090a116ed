#include "Api.h"

#include "Answers.h"
#include "Customers.h"
#include "FormBody.h"
#include "Passwords.h"
#include "Secrets.h"

namespace orvane_service {
namespace {

using nlohmann::json;

// A hash that no password has. Checking a password against it takes as long as against a real one, so that the time
// does not tell which users exist.
const std::string& NobodysHash() {
  static const std::string hash = HashPassword("") + "0";
  return hash;
}

}  // namespace

void Api::OpenSession(const httplib::Request& request, httplib::Response& response) {
  const Customer customer = CustomerOf(request, catalog_);
  AnswerSuccess(response, {{"apiver", customer.apiver}, {"auth_key", sessions_.Open(customer.id)}});
}

void Api::LogIn(const httplib::Request& request, httplib::Response& response) {
  const Customer customer = CustomerOf(request, catalog_);
  const auto fields = ParseFormBody(request.body);
  const std::string key = FieldOf(fields, "auth_key");
  if (!sessions_.IsOpen(customer.id, key)) throw Refusal{403, kSessionExpired};
  const std::optional<User> user = catalog_.FindUser(customer.id, FieldOf(fields, "username"));
  const std::string& hash = user ? user->password_hash : NobodysHash();
  // Digests, because a client can make the name as long as it likes.
  const std::string name = Sha256Hex(std::to_string(customer.id) + " " + FieldOf(fields, "username"));
  const auto result = gate_.Try(name, Sha256Hex(key),
                                [&] { return VerifyPassword(FieldOf(fields, "password"), hash) && user.has_value(); });
  if (result == PasswordGate::Result::kTooMany) {
    throw Refusal{429, "Too many logins are being tried. Please try again."};
  }
  if (result == PasswordGate::Result::kWrong) throw Refusal{403, "Invalid username or password."};
  const std::optional<std::string> token = sessions_.LogIn(customer.id, user->id, key);
  if (!token) throw Refusal{403, kSessionExpired};
  AnswerSuccess(response, {{"payload", {{"token", *token}}}});
}

void Api::RequireSession(const std::map<std::string, std::string>& fields, const Customer& customer) {
  if (!sessions_.FindUser(customer.id, FieldOf(fields, "auth_key"), FieldOf(fields, "auth_token"))) {
    throw Refusal{403, kSessionExpired};
  }
}

void Api::ListProjects(const httplib::Request& request, httplib::Response& response) {
  const Customer customer = CallerOf(request, catalog_);
  RequireSession(ParseFormBody(request.body), customer);
  json list = json::array();
  for (const Project& project : catalog_.Projects(customer.id)) {
    list.push_back({{"id", std::to_string(project.id)}, {"project_name", project.name}});
  }
  AnswerSuccess(response, {{"payload", list}});
}

void Api::ListFolders(const httplib::Request& request, httplib::Response& response) {
  const Customer customer = CallerOf(request, catalog_);
  const auto fields = ParseFormBody(request.body);
  RequireSession(fields, customer);
  const int64_t project = ProjectOf(request.matches[1], customer, catalog_);
  std::optional<int64_t> parent;
  if (fields.count("folder_id") > 0) parent = FolderOf(FieldOf(fields, "folder_id"), project, catalog_);
  json list = json::array();
  for (const Folder& folder : catalog_.Folders(project, parent)) {
    list.push_back({{"id", std::to_string(folder.id)}, {"name", folder.name}, {"sub_folders", folder.sub_folders}});
  }
  AnswerSuccess(response, {{"payload", list}});
}

}  // namespace orvane_service
