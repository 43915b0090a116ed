// What the link of an uploaded file leads to: a page with a player, and the file itself. The link is the key: its
// random id cannot be guessed, and whoever has it may look.
#pragma once

#include <string>

#include "Catalog.h"
#include "FileStore.h"
#include "HttpsServer.h"

namespace orvane_service {

/// May be used by any thread. What is not the customer's that the request was sent to is not found.
class ReviewPages {
 public:
  ReviewPages(Catalog& catalog, const FileStore& files) : catalog_(catalog), files_(files) {}

  /// The page of the file with the id.
  Response ShowPage(const Request& request, const std::string& id);

  /// The file itself, whole or in part.
  Response SendContent(const Request& request, const std::string& id);

 private:
  std::optional<FileDetails> Find(const Request& request, const std::string& id);

  Catalog& catalog_;
  const FileStore& files_;
};

/// The type under which a file of this name is sent. Only video and sound have one of their own: anything else, for
/// instance a page with scripts, must not be shown under the customer's address.
std::string ContentTypeOf(const std::string& file_name);

}  // namespace orvane_service
