// Generic passwords in the user's keyring, through the Secret Service.
#pragma once

#import <Foundation/Foundation.h>
#include <Security/Security.h>

/// Whether an item is meant to be synchronised. The keyring only remembers it.
enum class KeyringSynchronizable { kAny, kNo, kYes };

/// What describes an item; nil matches any.
struct KeyringAttributes {
  NSString *service = nil;
  NSString *account = nil;
  KeyringSynchronizable synchronizable = KeyringSynchronizable::kAny;
};

/// One item of the keyring.
@interface OrvKeyringItem : NSObject {
  void *item;  // a SecretItem, one reference owned
}

/// The secret's bytes, autoreleased; nil while the keyring is locked.
- (NSData *)secret;

/// The attributes under the Security framework's keys, autoreleased.
- (NSDictionary *)attributes;

/// Deletes the item from the keyring, unless that is locked. Returns a status of the Security framework.
- (OSStatus)remove;

@end

/// Finds the items with these attributes, in locked keyrings, too: an array of OrvKeyringItem, autoreleased, empty when
/// there is none.
OSStatus FindKeyringItems(const KeyringAttributes &attributes, NSArray **items);

/// Stores an item in the default keyring, unless that is locked. Any synchronisation is stored as none; label may be
/// nil.
OSStatus StoreKeyringItem(const KeyringAttributes &attributes, NSString *label, NSData *secret);
