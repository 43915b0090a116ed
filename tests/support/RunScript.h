// Catching what a script throws; in plain C++, since an Objective-C++ file cannot catch it with GCC's runtime.
#pragma once

#include <functional>
#include <string>

#include "WindowScript.h"

namespace window_test {

/// Runs the script. Returns false with what it waited for when it failed.
bool RunScript(const std::function<void(Script&)>& script, Script& actions, std::string* failure);

}  // namespace window_test
