#include <cstdio>
#include <exception>

#include "Application.h"

namespace bench {

// Not in an Objective-C++ file: the catch clauses there don't see C++ exceptions with every runtime.
bool RunReporting(const std::function<void()>& body) {
  try {
    body();
    return true;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "benchmark: %s\n", error.what());
  }
  return false;
}

}  // namespace bench
