// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <Security/SecBase.h>
#include <Security/SecItem.h>
#include <Security/SecKeychainItem.h>
