#include "Api.h"

#include <glib.h>

#include "Answers.h"
#include "Customers.h"
#include "Secrets.h"

namespace orvane_service {
namespace {

using nlohmann::json;

// Of a password that nobody has. Checking one against it takes as long as against a real one, so that the time does not
// tell which users exist.
const std::string& NobodysHash() {
  static const std::string hash = HashPassword(RandomHex(kIdentifierBytes));
  return hash;
}

}  // namespace

std::map<std::string, std::string> ParseFields(const std::string& body) {
  std::map<std::string, std::string> fields;
  GUriParamsIter iterator;
  const auto flags = static_cast<GUriParamsFlags>(G_URI_PARAMS_WWW_FORM | G_URI_PARAMS_PARSE_RELAXED);
  g_uri_params_iter_init(&iterator, body.data(), static_cast<gssize>(body.size()), "&", flags);
  char* name = nullptr;
  char* value = nullptr;
  while (g_uri_params_iter_next(&iterator, &name, &value, nullptr)) {
    fields[name] = value;
    g_free(name);
    g_free(value);
  }
  return fields;
}

Response Api::OpenSession(const Request& request) {
  const Customer customer = CustomerOf(request, catalog_);
  return SuccessAnswer({{"apiver", customer.apiver}, {"auth_key", sessions_.Open(customer.id)}});
}

Response Api::LogIn(const Request& request, const std::string& body) {
  const Customer customer = CustomerOf(request, catalog_);
  auto fields = ParseFields(body);
  const std::string key = fields["auth_key"];
  if (!sessions_.IsOpen(customer.id, key)) throw Refusal{403, kSessionExpired};
  const std::optional<User> user = catalog_.FindUser(customer.id, fields["username"]);
  {
    std::lock_guard<std::mutex> lock(checking_[turn_++ % checking_.size()]);
    if (stopped_) throw Refusal{503, "The service is ending."};
    const bool right = VerifyPassword(fields["password"], user ? user->password_hash : NobodysHash());
    if (!right || !user) throw Refusal{403, "Invalid username or password."};
  }
  const std::optional<std::string> token = sessions_.LogIn(customer.id, user->id, key);
  if (!token) throw Refusal{403, kSessionExpired};
  return SuccessAnswer({{"payload", {{"token", *token}}}});
}

void Api::RequireSession(std::map<std::string, std::string> fields, const Customer& customer) {
  if (!sessions_.FindUser(customer.id, fields["auth_key"], fields["auth_token"])) throw Refusal{403, kSessionExpired};
}

Response Api::ListProjects(const Request& request, const std::string& body) {
  const Customer customer = CallerOf(request, catalog_);
  RequireSession(ParseFields(body), customer);
  json list = json::array();
  for (const Project& project : catalog_.Projects(customer.id)) {
    list.push_back({{"id", std::to_string(project.id)}, {"project_name", project.name}});
  }
  return SuccessAnswer({{"payload", list}});
}

Response Api::ListFolders(const Request& request, const std::string& body, const std::string& project_id) {
  const Customer customer = CallerOf(request, catalog_);
  const auto fields = ParseFields(body);
  RequireSession(fields, customer);
  const int64_t project = ProjectOf(project_id, customer, catalog_);
  std::optional<int64_t> parent;
  if (fields.count("folder_id") > 0) parent = FolderOf(fields.at("folder_id"), project, catalog_);
  json list = json::array();
  for (const Folder& folder : catalog_.Folders(project, parent)) {
    list.push_back({{"id", std::to_string(folder.id)}, {"name", folder.name}, {"sub_folders", folder.sub_folders}});
  }
  return SuccessAnswer({{"payload", list}});
}

}  // namespace orvane_service
