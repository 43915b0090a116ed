/* The headers of the host's interface check their own layout; here the C compiler reads them. */
#include "PrSDKErrorSuite.h"
#include "PrSDKExportControllerSuite.h"
#include "PrSDKSequenceInfoSuite.h"
#include "PrSDKTimeSuite.h"
