// The store while the keyring is locked and has nobody to ask for its password.
#import <Foundation/Foundation.h>
#import <Security/Security.h>
#include <gtest/gtest.h>
#include <libsecret/secret.h>

#import "KcKeychain/KcKeychain.h"

// Returns whether the default keyring is locked now.
static bool LockDefaultKeyring() {
  SecretService *service = secret_service_get_sync(SECRET_SERVICE_NONE, nullptr, nullptr);
  SecretCollection *keyring =
      secret_collection_for_alias_sync(service, SECRET_COLLECTION_DEFAULT, SECRET_COLLECTION_NONE, nullptr, nullptr);
  GList keyrings = {keyring, nullptr, nullptr};
  const int locked = secret_service_lock_sync(service, &keyrings, nullptr, nullptr, nullptr);
  g_clear_object(&keyring);
  g_clear_object(&service);
  return locked == 1;
}

TEST(LockedKeyring, EveryOperationReportsThatItCannotAsk) {
  @autoreleasepool {
    ASSERT_TRUE([KcKeychain setPassword:@"secret" forService:@"service" account:@"there before"]);
    ASSERT_TRUE(LockDefaultKeyring());

    NSError *error = nil;
    EXPECT_EQ([KcKeychain passwordForService:@"service" account:@"there before" error:&error], nil);
    EXPECT_EQ([error code], errSecInteractionNotAllowed);
    EXPECT_STREQ([[error localizedDescription] UTF8String], "User interaction is not allowed.");
    for (NSString *account in @[ @"there before", @"new" ]) {
      error = nil;
      EXPECT_FALSE([KcKeychain setPassword:@"newer" forService:@"service" account:account error:&error]);
      EXPECT_EQ([error code], errSecInteractionNotAllowed) << [account UTF8String];
    }
    error = nil;
    EXPECT_FALSE([KcKeychain deletePasswordForService:@"service" account:@"there before" error:&error]);
    EXPECT_EQ([error code], errSecInteractionNotAllowed);

    // The names of the items are no secret.
    NSArray *items = [KcKeychain accountsForService:@"service"];
    ASSERT_EQ([items count], 1u);
    EXPECT_STREQ([[[items objectAtIndex:0] objectForKey:(id)kSecAttrAccount] UTF8String], "there before");
  }
}
