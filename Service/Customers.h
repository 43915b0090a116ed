// From a request to the customer whose host it was sent to.
#pragma once

#include <optional>
#include <string>

#include "Catalog.h"
#include "HttpsServer.h"

namespace orvane_service {

/// The customer that the Host header names. Throws Refusal if there is none.
Customer CustomerOf(const Request& request, Catalog& catalog);

/// Path under which the customer's clients make their calls after the login: it depends on the API's version.
std::string ApiBase(const Customer& customer);

/// As CustomerOf(). Throws Refusal also if the request's path is not below the customer's ApiBase().
Customer CallerOf(const Request& request, Catalog& catalog);

/// Reads an id of a project or folder: a positive decimal number, digits only. Nothing for any other text.
std::optional<int64_t> ParseId(const std::string& text);

/// The project of this id. Throws Refusal if the customer has none such.
int64_t ProjectOf(const std::string& id, const Customer& customer, Catalog& catalog);

/// The folder of this id in the project. Throws Refusal if there is none such.
int64_t FolderOf(const std::string& id, int64_t project, Catalog& catalog);

}  // namespace orvane_service
