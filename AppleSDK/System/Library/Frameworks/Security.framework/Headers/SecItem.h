// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

extern "C" {
extern const CFStringRef _Nonnull kSecClass API_AVAILABLE(macos(10.6));
extern const CFStringRef _Nonnull kSecClassGenericPassword API_AVAILABLE(macos(10.7));
extern const CFStringRef _Nonnull kSecAttrAccount API_AVAILABLE(macos(10.6));
extern const CFStringRef _Nonnull kSecAttrLabel API_AVAILABLE(macos(10.6));
extern const CFStringRef _Nonnull kSecAttrService API_AVAILABLE(macos(10.6));
extern const CFStringRef _Nonnull kSecAttrSynchronizable API_AVAILABLE(macos(10.9));
extern const CFStringRef _Nonnull kSecAttrSynchronizableAny API_AVAILABLE(macos(10.9));
extern const CFStringRef _Nonnull kSecMatchLimit API_AVAILABLE(macos(10.6));
extern const CFStringRef _Nonnull kSecMatchLimitAll API_AVAILABLE(macos(10.6));
extern const CFStringRef _Nonnull kSecMatchLimitOne API_AVAILABLE(macos(10.6));
extern const CFStringRef _Nonnull kSecReturnAttributes API_AVAILABLE(macos(10.6));
extern const CFStringRef _Nonnull kSecReturnData API_AVAILABLE(macos(10.6));
extern const CFStringRef _Nonnull kSecReturnRef API_AVAILABLE(macos(10.6));
extern const CFStringRef _Nonnull kSecValueData API_AVAILABLE(macos(10.6));
OSStatus SecItemAdd(CFDictionaryRef _Nonnull attributes, CFTypeRef _Nullable *_Nullable result) API_AVAILABLE(macos(10.6));
OSStatus SecItemCopyMatching(CFDictionaryRef _Nonnull query, CFTypeRef _Nullable *_Nullable result) API_AVAILABLE(macos(10.6));
}
