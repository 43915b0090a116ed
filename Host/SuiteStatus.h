// What the host's suites answer to the plug-in. -1 is not among the numbers: plug-ins answer it for their own failures.
#pragma once

#include "PrSDKTypes.h"

namespace orvane_host {

constexpr prSuiteError kSuiteSuccess = 0;
constexpr prSuiteError kSuiteFailed = 1;        ///< for instance a render that failed
constexpr prSuiteError kSuiteCancelled = 2;     ///< the person pressed Cancel in the host's own progress
constexpr prSuiteError kSuiteBadArgument = 3;   ///< a code or pointer that the function cannot use
constexpr prSuiteError kSuiteNotAvailable = 4;  ///< no such suite or function

}  // namespace orvane_host
