// What the link of an uploaded file leads to: a page with a player, and the file itself. The link is the key: its
// random id cannot be guessed, and whoever has it may look.
#pragma once

#include <httplib.h>

#include <string>

#include "Catalog.h"
#include "FileStore.h"

namespace orvane_service {

/// May be used by any thread. The file's id is the first group of the matched path.
class ReviewPages {
 public:
  ReviewPages(Catalog& catalog, const FileStore& files) : catalog_(catalog), files_(files) {}

  /// The page.
  void ShowPage(const httplib::Request& request, httplib::Response& response);

  /// The file, whole or in part.
  void SendContent(const httplib::Request& request, httplib::Response& response);

 private:
  std::optional<FileDetails> Find(const httplib::Request& request);

  Catalog& catalog_;
  const FileStore& files_;
};

/// The type under which a file of this name is sent. Only video and sound have one of their own: anything else, for
/// instance a page with scripts, must not be shown under the customer's address.
std::string ContentTypeOf(const std::string& file_name);

}  // namespace orvane_service
