#include "Customers.h"

#include <algorithm>

#include "Answers.h"
#include "CertificateAuthority.h"

namespace orvane_service {

std::optional<std::string> ParseHost(std::string_view header) {
  std::string host(header.substr(0, header.find(':')));
  std::transform(host.begin(), host.end(), host.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  if (host == kDomain) return "www";
  const std::string label = host.substr(0, host.find('.'));
  if (label.empty() || host != label + "." + std::string(kDomain)) return std::nullopt;
  return label;
}

Customer CustomerOf(const Request& request, Catalog& catalog) {
  const std::optional<std::string> label = ParseHost(request.Header("Host"));
  const std::optional<Customer> customer = label ? catalog.FindCustomer(*label) : std::nullopt;
  if (!customer) throw Refusal{404, "There is no customer under this address."};
  return *customer;
}

Customer CallerOf(const Request& request, Catalog& catalog) {
  Customer customer = CustomerOf(request, catalog);
  const std::string base = customer.apiver == "3" ? "/api/prjacc/" : "/v3/api/prjacc/";
  if (request.Path().rfind(base, 0) != 0) throw Refusal{404, "This address uses another version of the API."};
  return customer;
}

std::optional<int64_t> ParseId(const std::string& text) {
  // 18 digits always fit.
  if (text.empty() || text.size() > 18 || text.find_first_not_of("0123456789") != text.npos) return std::nullopt;
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
  if (folder && catalog.HasFolder(project, *folder)) return *folder;
  throw Refusal{404, "This folder does not exist in the project."};
}

}  // namespace orvane_service
