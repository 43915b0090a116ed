// The calls of the Security framework that the credential store uses, on the user's keyring (Secret Service).
//
// An item is a generic password, found by its attributes. All calls block until the keyring answers, and may let it ask
// the user to unlock. Main thread.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef const struct __CFDictionary* CFDictionaryRef;
typedef struct __SecKeychainItem* SecKeychainItemRef;

// Keys and values of an item's and a query's dictionary. Each is a string object.
extern const CFStringRef kSecClass;
extern const CFStringRef kSecClassGenericPassword;
extern const CFStringRef kSecAttrService;
extern const CFStringRef kSecAttrAccount;
extern const CFStringRef kSecAttrLabel;
extern const CFStringRef kSecAttrSynchronizable;
extern const CFStringRef kSecAttrSynchronizableAny;
extern const CFStringRef kSecValueData;
extern const CFStringRef kSecReturnData;
extern const CFStringRef kSecReturnAttributes;
extern const CFStringRef kSecReturnRef;
extern const CFStringRef kSecMatchLimit;
extern const CFStringRef kSecMatchLimitOne;
extern const CFStringRef kSecMatchLimitAll;

enum {
  errSecSuccess = 0,
  errSecParam = -50,
  errSecUserCanceled = -128,
  errSecNotAvailable = -25291,  // no keyring answers
  errSecDuplicateItem = -25299,
  errSecItemNotFound = -25300,
  errSecInteractionNotAllowed = -25308,  // the keyring is locked and cannot ask
};

/// Stores the item that the attributes describe. result is not used. A second item with the same service, account and
/// synchronisation is a duplicate; any synchronisation is stored as none.
OSStatus SecItemAdd(CFDictionaryRef attributes, CFTypeRef* result);

/// Finds items. By the query, *result becomes the secret (data), a dictionary of attributes or a reference, and with
/// kSecMatchLimitAll an array of them. The caller releases it with CFRelease.
OSStatus SecItemCopyMatching(CFDictionaryRef query, CFTypeRef* result);

OSStatus SecKeychainItemDelete(SecKeychainItemRef item);

/// A text for the status in English, or null for a status without one. The caller releases it. reserved is null.
CFStringRef SecCopyErrorMessageString(OSStatus status, void* reserved);

#ifdef __cplusplus
}
#endif
