#import "KcKeychain/KcKeychain.h"

#import <Foundation/Foundation.h>
#import <Security/Security.h>

#include <gtest/gtest.h>

#include <set>
#include <string>

#import "KcKeychain/KcKeychainQuery.h"

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
    EXPECT_EQ([KcKeychain passwordForService:@"round trip" account:@"jörg"], nil);

    EXPECT_TRUE([KcKeychain deletePasswordForService:@"round trip" account:@"Jörg"]);
    EXPECT_EQ([KcKeychain passwordForService:@"round trip" account:@"Jörg"], nil);
    error = nil;
    EXPECT_FALSE([KcKeychain deletePasswordForService:@"round trip" account:@"Jörg" error:&error]);
    EXPECT_EQ([error code], errSecItemNotFound);
    error = nil;
    EXPECT_FALSE([KcKeychain setPassword:nil forService:@"round trip" account:@"Jörg" error:&error]);
    EXPECT_EQ([error code], KcKeychainErrorBadArguments);
  }
}

TEST(KcKeychain, ListsTheItemsOfAServiceOrAll) {
  @autoreleasepool {
    NSError *error = nil;
    EXPECT_EQ([KcKeychain allAccounts:&error], nil);
    EXPECT_EQ([error code], errSecItemNotFound);

    EXPECT_TRUE([KcKeychain setPassword:@"1" forService:@"one" account:@"a"]);
    EXPECT_TRUE([KcKeychain setPassword:@"2" forService:@"two" account:@"a"]);
    KcKeychainQuery *labelled = [[[KcKeychainQuery alloc] init] autorelease];
    [labelled setService:@"two"];
    [labelled setAccount:@"b"];
    [labelled setLabel:@"Second 🎬"];
    [labelled setPassword:@"3"];
    EXPECT_TRUE([labelled save:NULL]);

    // An item without a label shows its service's name.
    const std::set<std::string> two = {"two/a/two", "two/b/Second 🎬"};
    EXPECT_EQ(Describe([KcKeychain accountsForService:@"two"]), two);
    const std::set<std::string> all = {"one/a/one", "two/a/two", "two/b/Second 🎬"};
    EXPECT_EQ(Describe([KcKeychain allAccounts]), all);
    error = nil;
    EXPECT_EQ([KcKeychain accountsForService:@"three" error:&error], nil);
    EXPECT_EQ([error code], errSecItemNotFound);
  }
}
