// The store on a system without a keyring.
#import <Foundation/Foundation.h>
#import <Security/Security.h>
#include <gtest/gtest.h>

#import "KcKeychain/KcKeychain.h"

TEST(MissingKeyring, EveryOperationReportsIt) {
  @autoreleasepool {
    NSError *error = nil;
    EXPECT_FALSE([KcKeychain setPassword:@"secret" forService:@"service" account:@"account" error:&error]);
    EXPECT_EQ([error code], errSecNotAvailable);
    EXPECT_STREQ([[error localizedDescription] UTF8String],
                 "No keychain is available. You may need to restart your computer.");
    error = nil;
    EXPECT_EQ([KcKeychain passwordForService:@"service" account:@"account" error:&error], nil);
    EXPECT_EQ([error code], errSecNotAvailable);
    error = nil;
    EXPECT_FALSE([KcKeychain deletePasswordForService:@"service" account:@"account" error:&error]);
    EXPECT_EQ([error code], errSecNotAvailable);
    error = nil;
    EXPECT_EQ([KcKeychain allAccounts:&error], nil);
    EXPECT_EQ([error code], errSecNotAvailable);
  }
}
