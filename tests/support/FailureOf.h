// Catching what C++ code throws; in plain C++, since an Objective-C++ file cannot catch it with GCC's runtime.
#pragma once

#include <functional>
#include <string>

namespace window_test {

/// Runs the body. Returns the message of the std::exception that it threw, or an empty string.
std::string FailureOf(const std::function<void()>& body);

}  // namespace window_test
