#include "Customers.h"

#include <algorithm>

#include "Answers.h"
#include "HostNames.h"

namespace orvane_service {

Customer CustomerOf(const Request& request, Catalog& catalog) {
  const HostName host = ParseHost(request.Header("Host"));
  std::optional<Customer> customer;
  if (host.site == Site::kCustomer) customer = catalog.FindCustomer(host.subdomain);
  if (!customer) throw Refusal{404, "There is no customer under this address."};
  return *customer;
}

std::string ApiBase(const Customer& customer) {
  return customer.apiver == "3" ? "/api/prjacc" : "/v3/api/prjacc";
}

Customer CallerOf(const Request& request, Catalog& catalog) {
  Customer customer = CustomerOf(request, catalog);
  if (request.Path().rfind(ApiBase(customer) + "/", 0) != 0) {
    throw Refusal{404, "This address uses another version of the API."};
  }
  return customer;
}

std::optional<int64_t> ParseId(const std::string& text) {
  // 18 digits always fit.
  if (text.empty() || text.size() > 18) return std::nullopt;
  if (!std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; })) return std::nullopt;
  const int64_t id = std::stoll(text);
  if (id == 0) return std::nullopt;
  return id;
}

int64_t ProjectOf(const std::string& id, const Customer& customer, Catalog& catalog) {
  const std::optional<int64_t> project = ParseId(id);
  if (!project || !catalog.HasProject(customer.id, *project)) throw Refusal{404, "This project does not exist."};
  return *project;
}

int64_t FolderOf(const std::string& id, int64_t project, Catalog& catalog) {
  const std::optional<int64_t> folder = ParseId(id);
  if (!folder || !catalog.HasFolder(project, *folder)) {
    throw Refusal{404, "This folder does not exist in the project."};
  }
  return *folder;
}

}  // namespace orvane_service
