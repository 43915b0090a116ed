// The host's suites: null until start-up has acquired them, and where the host does not have them. The host owns them.
// Written at start-up and shut-down. [main-thread]
#pragma once

#include "PrSDKErrorSuite.h"
#include "PrSDKExportControllerSuite.h"
#include "PrSDKSequenceInfoSuite.h"
#include "PrSDKTimeSuite.h"

extern const PrSDKExportControllerSuite* sExportControllerSuitePtr;
extern const PrSDKErrorSuite3* sErrorSuitePtr;
extern const PrSDKSequenceInfoSuite* sSequenceInfoSuitePtr;
extern const PrSDKTimeSuite* sTimeSuitePtr;
