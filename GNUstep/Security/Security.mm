#import <Foundation/Foundation.h>
#include <Security/Security.h>

#import "KeyringItem.h"

namespace {

NSDictionary *Dictionary(CFDictionaryRef dictionary) {
  return reinterpret_cast<NSDictionary *>(const_cast<__CFDictionary *>(dictionary));
}

id Value(NSDictionary *dictionary, CFStringRef key) {
  return [dictionary objectForKey:reinterpret_cast<NSString *>(const_cast<__CFString *>(key))];
}

bool IsSet(NSDictionary *query, CFStringRef key) {
  return [Value(query, key) boolValue];
}

bool IsText(id value, CFStringRef text) {
  return [value isEqual:reinterpret_cast<NSString *>(const_cast<__CFString *>(text))];
}

KeyringAttributes AttributesOf(NSDictionary *query) {
  KeyringAttributes attributes;
  attributes.service = Value(query, kSecAttrService);
  attributes.account = Value(query, kSecAttrAccount);
  id synchronizable = Value(query, kSecAttrSynchronizable);
  if (!synchronizable || IsText(synchronizable, kSecAttrSynchronizableAny)) {
    attributes.synchronizable = KeyringSynchronizable::kAny;
  } else {
    attributes.synchronizable = [synchronizable boolValue] ? KeyringSynchronizable::kYes : KeyringSynchronizable::kNo;
  }
  return attributes;
}

// What the query wants of one item: its secret, its attributes or itself. The keyring gives no secret while it is
// locked.
id Wanted(NSDictionary *query, OrvKeyringItem *item) {
  if (IsSet(query, kSecReturnData)) return [item secret];
  if (IsSet(query, kSecReturnAttributes)) return [item attributes];
  return item;
}

}  // namespace

extern "C" {
#define ORVANE_SECURITY_STRING(name, text) const CFStringRef name = reinterpret_cast<CFStringRef>(@text)
ORVANE_SECURITY_STRING(kSecClass, "class");
ORVANE_SECURITY_STRING(kSecClassGenericPassword, "genp");
ORVANE_SECURITY_STRING(kSecAttrService, "svce");
ORVANE_SECURITY_STRING(kSecAttrAccount, "acct");
ORVANE_SECURITY_STRING(kSecAttrLabel, "labl");
ORVANE_SECURITY_STRING(kSecAttrSynchronizable, "sync");
ORVANE_SECURITY_STRING(kSecAttrSynchronizableAny, "syna");
ORVANE_SECURITY_STRING(kSecValueData, "v_Data");
ORVANE_SECURITY_STRING(kSecReturnData, "r_Data");
ORVANE_SECURITY_STRING(kSecReturnAttributes, "r_Attributes");
ORVANE_SECURITY_STRING(kSecReturnRef, "r_Ref");
ORVANE_SECURITY_STRING(kSecMatchLimit, "m_Limit");
ORVANE_SECURITY_STRING(kSecMatchLimitOne, "m_LimitOne");
ORVANE_SECURITY_STRING(kSecMatchLimitAll, "m_LimitAll");
#undef ORVANE_SECURITY_STRING
}

OSStatus SecItemAdd(CFDictionaryRef attributes, CFTypeRef *) {
  NSDictionary *item = Dictionary(attributes);
  NSData *secret = Value(item, kSecValueData);
  if (!IsText(Value(item, kSecClass), kSecClassGenericPassword) || !secret) return errSecParam;
  KeyringAttributes described = AttributesOf(item);
  if (described.synchronizable == KeyringSynchronizable::kAny) described.synchronizable = KeyringSynchronizable::kNo;
  NSArray *found = nil;
  const OSStatus status = FindKeyringItems(described, &found);
  if (status != errSecSuccess) return status;
  if ([found count] > 0) return [[found objectAtIndex:0] secret] ? errSecDuplicateItem : errSecInteractionNotAllowed;
  return StoreKeyringItem(described, Value(item, kSecAttrLabel), secret);
}

OSStatus SecItemCopyMatching(CFDictionaryRef query, CFTypeRef *result) {
  NSDictionary *wanted = Dictionary(query);
  if (!IsText(Value(wanted, kSecClass), kSecClassGenericPassword)) return errSecParam;
  NSArray *found = nil;
  const OSStatus status = FindKeyringItems(AttributesOf(wanted), &found);
  if (status != errSecSuccess) return status;
  if ([found count] == 0) return errSecItemNotFound;

  if (IsText(Value(wanted, kSecMatchLimit), kSecMatchLimitAll)) {
    NSMutableArray *all = [[NSMutableArray alloc] init];
    for (OrvKeyringItem *item in found) {
      id value = Wanted(wanted, item);
      if (value) [all addObject:value];
    }
    *result = all;
    return errSecSuccess;
  }
  *result = [Wanted(wanted, [found objectAtIndex:0]) retain];
  return *result ? errSecSuccess : errSecInteractionNotAllowed;
}

OSStatus SecKeychainItemDelete(SecKeychainItemRef item) {
  return [reinterpret_cast<OrvKeyringItem *>(item) remove];
}

CFStringRef SecCopyErrorMessageString(OSStatus status, void *) {
  const struct {
    OSStatus status;
    NSString *text;
  } messages[] = {
      {errSecSuccess, @"No error."},
      {errSecParam, @"One or more parameters passed to a function were not valid."},
      {errSecUserCanceled, @"User canceled the operation."},
      {errSecNotAvailable, @"No keychain is available. You may need to restart your computer."},
      {errSecDuplicateItem, @"The specified item already exists in the keychain."},
      {errSecItemNotFound, @"The specified item could not be found in the keychain."},
      {errSecInteractionNotAllowed, @"User interaction is not allowed."},
  };
  for (const auto &message : messages) {
    if (message.status == status) return reinterpret_cast<CFStringRef>([message.text copy]);
  }
  return nullptr;
}
