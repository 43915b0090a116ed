// The common uses of KcKeychainQuery in one line each. The plug-in itself asks KcKeychainQuery.
#pragma once

#import <Foundation/Foundation.h>

#include "RuntimeName.h"

/// Every error argument may be NULL; errors are KcKeychainQuery's. Results are autoreleased. [main-thread]
ORV_RUNTIME_NAME("OrvKcKeychain")
@interface KcKeychain : NSObject

/// The item's password; nil when there is no such item.
+ (NSString *)passwordForService:(NSString *)service account:(NSString *)account;
+ (NSString *)passwordForService:(NSString *)service account:(NSString *)account error:(NSError **)error;

+ (BOOL)deletePasswordForService:(NSString *)service account:(NSString *)account;
+ (BOOL)deletePasswordForService:(NSString *)service account:(NSString *)account error:(NSError **)error;

/// Saves the password, in place of one that is there already.
+ (BOOL)setPassword:(NSString *)password forService:(NSString *)service account:(NSString *)account;
+ (BOOL)setPassword:(NSString *)password
         forService:(NSString *)service
            account:(NSString *)account
              error:(NSError **)error;

/// Attribute dictionaries of every item, or of a service's items; nil when there is none.
+ (NSArray *)allAccounts;
+ (NSArray *)allAccounts:(NSError **)error;
+ (NSArray *)accountsForService:(NSString *)service;
+ (NSArray *)accountsForService:(NSString *)service error:(NSError **)error;

@end
