// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

typedef struct CF_BRIDGED_TYPE(id) __SecKeychainItem *SecKeychainItemRef;

enum : OSStatus { errSecSuccess = 0, errSecItemNotFound = -25300 };

extern "C" {
CFStringRef _Nullable SecCopyErrorMessageString(OSStatus status, void *_Nullable reserved) API_AVAILABLE(macos(10.3));
}
