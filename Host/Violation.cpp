#include "Violation.h"

#include <unistd.h>

#include <cstdio>

#include "ExitStatus.h"

namespace orvane_host {

void ReportViolation(const std::string& what) {
  fprintf(stderr, "orvane-host: the plug-in broke the rules: %s\n", what.c_str());
  fprintf(stderr, "orvane-host: %s\n", TextOf(ExitStatus::kContractViolation));
  fflush(nullptr);
  // Not exit(): the call may come on any thread, while others use what the static destructors would destroy.
  _exit(static_cast<int>(ExitStatus::kContractViolation));
}

}  // namespace orvane_host
