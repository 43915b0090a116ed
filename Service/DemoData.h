// What a new service starts with, so that a client has something to log in to and to choose from.
#pragma once

#include <string>

#include "Catalog.h"

namespace orvane_service {

/// Puts in two customers, each with the user "editor" of the given password and with three projects of nested folders:
/// "acme" (version "3" of the API) and "nordlicht" (version "2"). The catalog must be empty. Throws DatabaseError.
void AddDemoData(Database& database, const std::string& password);

}  // namespace orvane_service
