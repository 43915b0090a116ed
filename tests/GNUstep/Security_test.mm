#import <Foundation/Foundation.h>
#import <Security/Security.h>
#include <gtest/gtest.h>

namespace {

NSMutableDictionary *Item(NSString *account) {
  return [NSMutableDictionary dictionaryWithObjectsAndKeys:(id)kSecClassGenericPassword, (id)kSecClass, @"Orvane tests",
                                                           (id)kSecAttrService, account, (id)kSecAttrAccount, nil];
}

OSStatus Add(NSDictionary *description, NSString *secret) {
  NSMutableDictionary *item = [[description mutableCopy] autorelease];
  [item setObject:[secret dataUsingEncoding:NSUTF8StringEncoding] forKey:(id)kSecValueData];
  return SecItemAdd((CFDictionaryRef)item, nullptr);
}

id Find(NSDictionary *description, CFStringRef wanted, CFStringRef limit) {
  NSMutableDictionary *query = [[description mutableCopy] autorelease];
  [query setObject:@(YES) forKey:(id)wanted];
  [query setObject:(id)limit forKey:(id)kSecMatchLimit];
  CFTypeRef result = nullptr;
  if (SecItemCopyMatching((CFDictionaryRef)query, &result) != errSecSuccess) return nil;
  return [(id)result autorelease];
}

}  // namespace

TEST(Security, ASecondItemOfTheSameNameIsADuplicate) {
  @autoreleasepool {
    NSMutableDictionary *local = Item(@"duplicate");
    EXPECT_EQ(Add(local, @"first"), errSecSuccess);
    EXPECT_EQ(Add(local, @"second"), errSecDuplicateItem);
    NSData *secret = Find(local, kSecReturnData, kSecMatchLimitOne);
    EXPECT_TRUE([secret isEqual:[@"first" dataUsingEncoding:NSUTF8StringEncoding]]);

    NSMutableDictionary *synchronised = Item(@"duplicate");
    [synchronised setObject:@(YES) forKey:(id)kSecAttrSynchronizable];
    EXPECT_EQ(Add(synchronised, @"third"), errSecSuccess);
    EXPECT_EQ(Add(synchronised, @"fourth"), errSecDuplicateItem);
    EXPECT_EQ([Find(local, kSecReturnAttributes, kSecMatchLimitAll) count], 2u);
  }
}
