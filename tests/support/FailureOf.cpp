#include "FailureOf.h"

#include <exception>

namespace window_test {

std::string FailureOf(const std::function<void()>& body) {
  try {
    body();
  } catch (const std::exception& exception) {
    return exception.what();
  }
  return "";
}

}  // namespace window_test
