// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <Security/SecBase.h>

extern "C" {
OSStatus SecKeychainItemDelete(SecKeychainItemRef _Nonnull item) API_DEPRECATED("SecKeychain is deprecated", macos(10.2, 10.10));
}
