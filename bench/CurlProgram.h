// The upload as the program curl makes it.
#pragma once

#include <string>
#include <vector>

#include "ChildProcess.h"
#include "SinkProcess.h"

namespace bench {

/// The arguments of curl for the same form, with the same parts, that the plug-in sends for the variables of the
/// workflow as they stand. It shows no progress and writes its time to standard output, in seconds.
std::vector<std::string> CurlUploadArguments(const SinkProcess& sink);

/// What an upload by curl took, in seconds.
struct CurlTimes {
  /// From the start of the program to its end.
  double whole = 0;
  /// What curl itself says: from the start of the transfer, connecting included.
  double transfer = 0;
};

/// Runs it to its end. Throws std::runtime_error when it fails.
CurlTimes UploadWithCurl(const SinkProcess& sink);

}  // namespace bench
