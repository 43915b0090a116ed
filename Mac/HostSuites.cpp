#include "HostSuites.h"

const PrSDKExportControllerSuite* sExportControllerSuitePtr = nullptr;
const PrSDKErrorSuite3* sErrorSuitePtr = nullptr;
const PrSDKSequenceInfoSuite* sSequenceInfoSuitePtr = nullptr;
const PrSDKTimeSuite* sTimeSuitePtr = nullptr;
