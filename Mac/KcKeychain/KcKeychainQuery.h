// One generic-password item of the user's keychain.
#pragma once

#import <Foundation/Foundation.h>

#include "RuntimeName.h"

/// Which items a query matches, and what a saved item becomes.
typedef NS_ENUM(NSInteger, KcKeychainSynchronizationMode) {
  KcKeychainSynchronizationModeAny = 0,  ///< synchronised and local items
  KcKeychainSynchronizationModeNo = 1,
  KcKeychainSynchronizationModeYes = 2
};

/// The code of the error for a missing service, account or secret.
enum { KcKeychainErrorBadArguments = -1001 };

/// Describes an item and saves, fetches, lists and deletes it. Every error argument may be NULL; on success nothing is
/// written to it. Errors have the domain ORVANE_KEYCHAIN_ERROR_DOMAIN and the keychain's status as their code.
/// [main-thread]
ORV_RUNTIME_NAME("OrvKcKeychainQuery")
@interface KcKeychainQuery : NSObject {
  NSString *account;
  NSString *service;
  NSString *label;
  NSData *passwordData;
  KcKeychainSynchronizationMode synchronizationMode;
}

@property(nonatomic, copy) NSString *account;
@property(nonatomic, copy) NSString *service;

/// Written on save, when set.
@property(nonatomic, copy) NSString *label;

/// The secret.
@property(nonatomic, copy) NSData *passwordData;

@property(nonatomic, assign) KcKeychainSynchronizationMode synchronizationMode;

/// passwordData as UTF-8 text; nil when it is empty.
@property(nonatomic, copy) NSString *password;

/// passwordData as a keyed archive of any object; nil when it is empty or no such archive.
@property(nonatomic, copy) id<NSCoding> passwordObject;

/// Whether this system knows synchronised items.
+ (BOOL)isSynchronizationAvailable;

/// The error for a status, autoreleased; nil for success.
+ (NSError *)errorWithCode:(NSInteger)status;

/// Saves the secret under service and account, in place of an item that is there already.
- (BOOL)save:(NSError **)error;

/// Deletes the item. Deleting one that does not exist is an error.
- (BOOL)deleteItem:(NSError **)error;

/// The attribute dictionaries of all items that match what is set.
- (NSArray *)fetchAll:(NSError **)error;

/// Fetches the item's secret into passwordData.
- (BOOL)fetch:(NSError **)error;

/// The attributes that describe the item to the keychain.
- (NSMutableDictionary *)query;

@end
