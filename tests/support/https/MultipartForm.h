// The parts of a multipart/form-data request.
#pragma once

#include "HttpsServer.h"

#include <string>
#include <vector>

namespace orvane_test {

struct FormPart {
  std::string name;
  /// Empty for a part that is no file.
  std::string fileName;
  std::string contentType;
  std::string content;
};

/// The parts in the order of the request. Throws std::runtime_error when the request is no well-formed form.
std::vector<FormPart> ParseMultipartForm(const Request& request);

}  // namespace orvane_test
