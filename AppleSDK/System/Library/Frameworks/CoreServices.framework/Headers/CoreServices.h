// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <CarbonCore/CarbonCore.h>
