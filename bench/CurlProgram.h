// The upload as the program curl makes it.
#pragma once

#include <string>
#include <vector>

#include "ChildProcess.h"
#include "SinkProcess.h"

namespace bench {

/// The arguments of curl for the same form, with the same parts, that the plug-in sends for the variables of the
/// workflow as they stand. It shows no progress.
std::vector<std::string> CurlUploadArguments(const SinkProcess& sink);

/// Runs it to its end. Returns the seconds from the start of the program. Throws std::runtime_error when it fails.
double UploadWithCurl(const SinkProcess& sink);

}  // namespace bench
