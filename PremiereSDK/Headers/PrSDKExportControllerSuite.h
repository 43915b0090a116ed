/* The suite in which the host offers an export controller its exports. */
#pragma once

/* The table itself, PrSDKExportControllerSuite, whose functions' names are an assumption. */
#include "PrSDKExportController.h"

#define kPrSDKExportControllerSuite "Premiere ExportController Suite"
#define kPrSDKExportControllerSuiteVersion 1
