// The keychain item of "Remember me": a JSON object of three strings.
#pragma once

#import <Foundation/Foundation.h>

@class KcKeychainQuery;

extern NSString *const kSavedSubdomainKey;
extern NSString *const kSavedUsernameKey;
extern NSString *const kSavedPasswordKey;

/// An autoreleased query that names the item.
KcKeychainQuery *SavedLoginQuery();
