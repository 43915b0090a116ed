#include <exception>

#include "ExceptionGuard.h"

// In a file of plain C++: with GCC's Objective-C runtime a catch in an Objective-C++ file catches no C++ exception.
bool CatchCppExceptions(const std::function<void()>& body, std::string* message) {
  try {
    body();
    return true;
  } catch (const std::exception& exception) {
    *message = exception.what();
  } catch (...) {
    *message = "an exception of unknown type";
  }
  return false;
}
