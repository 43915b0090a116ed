#import "KcKeychain/KcKeychain.h"

#import <Foundation/Foundation.h>
#import <Security/Security.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

// "service/account/label" of each item.
std::set<std::string> Describe(NSArray *items) {
  std::set<std::string> texts;
  for (NSDictionary *item in items) {
    NSString *text =
        [NSString stringWithFormat:@"%@/%@/%@", [item objectForKey:(id)kSecAttrService],
                                   [item objectForKey:(id)kSecAttrAccount], [item objectForKey:(id)kSecAttrLabel]];
    texts.insert([text UTF8String]);
  }
  return texts;
}

}  // namespace

TEST(KcKeychain, SavesReplacesReadsAndDeletes) {
  @autoreleasepool {
    NSError *error = nil;
    EXPECT_EQ([KcKeychain passwordForService:@"round trip" account:@"Jörg" error:&error], nil);
    EXPECT_EQ([error code], errSecItemNotFound);
    EXPECT_TRUE([KcKeychain setPassword:@"geheim" forService:@"round trip" account:@"Jörg"]);
    EXPECT_TRUE([KcKeychain setPassword:@"geheimer 🔑" forService:@"round trip" account:@"Jörg" error:&error]);
    EXPECT_STREQ([[KcKeychain passwordForService:@"round trip" account:@"Jörg"] UTF8String], "geheimer 🔑");
    EXPECT_TRUE([KcKeychain deletePasswordForService:@"round trip" account:@"Jörg"]);
    EXPECT_EQ([KcKeychain passwordForService:@"round trip" account:@"Jörg"], nil);
    error = nil;
    EXPECT_FALSE([KcKeychain deletePasswordForService:@"round trip" account:@"Jörg" error:&error]);
    EXPECT_EQ([error code], errSecItemNotFound);
    EXPECT_FALSE([KcKeychain setPassword:nil forService:@"round trip" account:@"Jörg" error:&error]);
    EXPECT_EQ([error code], -1001) << "no password";
  }
}

TEST(KcKeychain, ListsTheItemsOfAServiceOrAll) {
  @autoreleasepool {
    EXPECT_EQ([KcKeychain allAccounts], nil);
    EXPECT_TRUE([KcKeychain setPassword:@"1" forService:@"one" account:@"a"]);
    EXPECT_TRUE([KcKeychain setPassword:@"2" forService:@"two" account:@"b"]);
    // An item without a label shows its service's name.
    EXPECT_EQ(Describe([KcKeychain accountsForService:@"two"]), (std::set<std::string>{"two/b/two"}));
    EXPECT_EQ(Describe([KcKeychain allAccounts]), (std::set<std::string>{"one/a/one", "two/b/two"}));
    NSError *error = nil;
    EXPECT_EQ([KcKeychain accountsForService:@"three" error:&error], nil);
    EXPECT_EQ([error code], errSecItemNotFound);
  }
}
