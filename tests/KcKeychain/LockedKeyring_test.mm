// The store while the keyring is locked and has nobody to ask for its password.
#import <Foundation/Foundation.h>
#import <Security/Security.h>
#include <gtest/gtest.h>
#include <libsecret/secret.h>

#include <memory>

#import "KcKeychain/KcKeychainQuery.h"

namespace {

KcKeychainQuery *Query(NSString *account) {
  KcKeychainQuery *query = [[[KcKeychainQuery alloc] init] autorelease];
  [query setService:@"Orvane tests"];
  [query setAccount:account];
  return query;
}

struct ObjectDeleter {
  void operator()(void *object) const { g_object_unref(object); }
};

// Returns whether the default keyring is locked now.
bool LockDefaultKeyring() {
  std::unique_ptr<SecretService, ObjectDeleter> service(secret_service_get_sync(SECRET_SERVICE_NONE, nullptr, nullptr));
  if (!service) return false;
  std::unique_ptr<SecretCollection, ObjectDeleter> keyring(secret_collection_for_alias_sync(
      service.get(), SECRET_COLLECTION_DEFAULT, SECRET_COLLECTION_NONE, nullptr, nullptr));
  if (!keyring) return false;
  GList keyrings = {keyring.get(), nullptr, nullptr};
  return secret_service_lock_sync(service.get(), &keyrings, nullptr, nullptr, nullptr) == 1;
}

}  // namespace

TEST(LockedKeyring, EveryOperationReportsThatItCannotAsk) {
  @autoreleasepool {
    KcKeychainQuery *saved = Query(@"there before");
    [saved setPassword:@"secret"];
    ASSERT_TRUE([saved save:NULL]);
    ASSERT_TRUE(LockDefaultKeyring());

    NSError *error = nil;
    KcKeychainQuery *query = Query(@"there before");
    EXPECT_FALSE([query fetch:&error]);
    EXPECT_EQ([error code], errSecInteractionNotAllowed);
    EXPECT_EQ([query passwordData], nil);
    EXPECT_STREQ([[error localizedDescription] UTF8String], "User interaction is not allowed.");

    for (NSString *account in @[ @"there before", @"new" ]) {
      error = nil;
      query = Query(account);
      [query setPassword:@"newer"];
      EXPECT_FALSE([query save:&error]) << [account UTF8String];
      EXPECT_EQ([error code], errSecInteractionNotAllowed) << [account UTF8String];
    }

    error = nil;
    EXPECT_FALSE([Query(@"there before") deleteItem:&error]);
    EXPECT_EQ([error code], errSecInteractionNotAllowed);

    // The names of the items are no secret.
    NSArray *items = [Query(nil) fetchAll:NULL];
    ASSERT_EQ([items count], 1u);
    EXPECT_STREQ([[[items objectAtIndex:0] objectForKey:(id)kSecAttrAccount] UTF8String], "there before");
  }
}
