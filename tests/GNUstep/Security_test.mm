// What KcKeychainQuery_test cannot see: a store that took a second item would hide that the first was not deleted.
#import <Foundation/Foundation.h>
#import <Security/Security.h>
#include <gtest/gtest.h>

TEST(Security, ASecondItemOfTheSameNameIsADuplicate) {
  @autoreleasepool {
    NSMutableDictionary *item = [NSMutableDictionary
        dictionaryWithObjectsAndKeys:(id)kSecClassGenericPassword, (id)kSecClass, @"Orvane tests", (id)kSecAttrService,
                                     @"editor", (id)kSecAttrAccount, [NSData data], (id)kSecValueData, nil];
    EXPECT_EQ(SecItemAdd((CFDictionaryRef)item, nullptr), errSecSuccess);
    EXPECT_EQ(SecItemAdd((CFDictionaryRef)item, nullptr), errSecDuplicateItem);
    [item setObject:@(YES) forKey:(id)kSecAttrSynchronizable];
    EXPECT_EQ(SecItemAdd((CFDictionaryRef)item, nullptr), errSecSuccess);
    EXPECT_EQ(SecItemAdd((CFDictionaryRef)item, nullptr), errSecDuplicateItem);
  }
}
