#import "KcKeychain/KcKeychainQuery.h"

#import <Cocoa/Cocoa.h>
#import <Security/Security.h>
#include <gtest/gtest.h>

#include <string>

#include "Deployment.h"

namespace {

NSString *const kService = @"Orvane tests";

// Every test starts with an empty keyring.
class KcKeychainQueryTest : public testing::Test {
 protected:
  void SetUp() override {
    pool_ = [[NSAutoreleasePool alloc] init];
    for (NSDictionary *item in [Query(nil, nil) fetchAll:NULL]) {
      KcKeychainQuery *query = Query([item objectForKey:(id)kSecAttrService], [item objectForKey:(id)kSecAttrAccount]);
      ASSERT_TRUE([query deleteItem:NULL]);
    }
    ASSERT_EQ([Query(nil, nil) fetchAll:NULL], nil);
  }

  void TearDown() override { [pool_ release]; }

  static KcKeychainQuery *Query(NSString *service, NSString *account) {
    KcKeychainQuery *query = [[[KcKeychainQuery alloc] init] autorelease];
    [query setService:service];
    [query setAccount:account];
    return query;
  }

  static KcKeychainQuery *Query(NSString *account, KcKeychainSynchronizationMode mode) {
    KcKeychainQuery *query = Query(kService, account);
    [query setSynchronizationMode:mode];
    return query;
  }

  // Saves the password and returns the error's code, 0 for success.
  static NSInteger Save(KcKeychainQuery *query, NSString *password) {
    [query setPassword:password];
    NSError *error = nil;
    return [query save:&error] ? 0 : [error code];
  }

 private:
  NSAutoreleasePool *pool_ = nil;
};

}  // namespace

TEST_F(KcKeychainQueryTest, KeepsAnySecret) {
  const unsigned char binary[] = {0xff, 0x00, 0xfe, 'a', 0x00};
  NSDictionary *secrets = @{
    @"Größe 🎬 konto" : [@"pässwörd 🔑 \"\\\n" dataUsingEncoding:NSUTF8StringEncoding],
    @"binary" : [NSData dataWithBytes:binary length:sizeof binary],
    @"empty" : [NSData data],
    @"long" : [NSMutableData dataWithLength:100000],
    @"" : [@"no account name" dataUsingEncoding:NSUTF8StringEncoding]
  };
  for (NSString *account in secrets) {
    KcKeychainQuery *saved = Query(kService, account);
    [saved setPasswordData:[secrets objectForKey:account]];
    NSError *untouched = [NSError errorWithDomain:@"untouched" code:1 userInfo:nil];
    NSError *error = untouched;
    EXPECT_TRUE([saved save:&error]) << [[error description] UTF8String];
    EXPECT_EQ(error, untouched) << "success writes no error";
  }
  for (NSString *account in secrets) {
    KcKeychainQuery *fetched = Query(kService, account);
    ASSERT_TRUE([fetched fetch:NULL]) << [account UTF8String];
    EXPECT_TRUE([[fetched passwordData] isEqual:[secrets objectForKey:account]]) << [account UTF8String];
    EXPECT_TRUE([fetched deleteItem:NULL]);
    EXPECT_FALSE([fetched fetch:NULL]);
  }
}

TEST_F(KcKeychainQueryTest, SavingAgainReplacesTheItem) {
  EXPECT_EQ(Save(Query(kService, @"editor"), @"first"), 0);
  EXPECT_EQ(Save(Query(kService, @"other"), @"neighbour"), 0);
  KcKeychainQuery *query = Query(kService, @"editor");
  [query setLabel:@"Orvane log-in"];
  EXPECT_EQ(Save(query, @"second"), 0);

  NSArray *items = [Query(kService, @"editor") fetchAll:NULL];
  ASSERT_EQ([items count], 1u);
  EXPECT_STREQ([[[items objectAtIndex:0] objectForKey:(id)kSecAttrLabel] UTF8String], "Orvane log-in");
  KcKeychainQuery *fetched = Query(kService, @"editor");
  ASSERT_TRUE([fetched fetch:NULL]);
  EXPECT_STREQ([[fetched password] UTF8String], "second");
  KcKeychainQuery *neighbour = Query(kService, @"other");
  ASSERT_TRUE([neighbour fetch:NULL]);
  EXPECT_STREQ([[neighbour password] UTF8String], "neighbour");
}

TEST_F(KcKeychainQueryTest, IncompleteQueriesAreRefusedAndChangeNothing) {
  EXPECT_EQ(Save(Query(kService, @"editor"), @"secret"), 0);
  EXPECT_EQ(Save(Query(nil, @"editor"), @"secret"), KcKeychainErrorBadArguments);
  EXPECT_EQ(Save(Query(kService, nil), @"secret"), KcKeychainErrorBadArguments);
  EXPECT_EQ(Save(Query(kService, @"editor"), nil), KcKeychainErrorBadArguments);
  for (KcKeychainQuery *incomplete in @[ Query(nil, @"editor"), Query(kService, nil) ]) {
    NSError *error = nil;
    EXPECT_FALSE([incomplete fetch:&error]);
    EXPECT_EQ([error code], KcKeychainErrorBadArguments);
    error = nil;
    EXPECT_FALSE([incomplete deleteItem:&error]);
    EXPECT_EQ([error code], KcKeychainErrorBadArguments);
    EXPECT_FALSE([incomplete fetch:NULL]);
  }
  EXPECT_EQ([[Query(nil, nil) fetchAll:NULL] count], 1u);
  EXPECT_TRUE([Query(kService, @"editor") fetch:NULL]) << "a refused save must not delete what is there";
}

TEST_F(KcKeychainQueryTest, ErrorsSayWhatHappened) {
  NSError *error = nil;
  EXPECT_FALSE([Query(kService, @"nobody") deleteItem:&error]);
  EXPECT_EQ([error code], errSecItemNotFound);
  EXPECT_STREQ([[error domain] UTF8String], ORVANE_KEYCHAIN_ERROR_DOMAIN);
  EXPECT_STREQ([[error localizedDescription] UTF8String], "The specified item could not be found in the keychain.");
  // The program has no table of strings, so that the key stands for the text.
  NSError *bad = [KcKeychainQuery errorWithCode:KcKeychainErrorBadArguments];
  EXPECT_EQ([bad code], -1001);
  EXPECT_STREQ([[bad localizedDescription] UTF8String], "KcKeychainErrorBadArguments");
  EXPECT_EQ([KcKeychainQuery errorWithCode:0], nil);
  EXPECT_EQ([[[KcKeychainQuery errorWithCode:-77777] userInfo] count], 0u);
}

TEST_F(KcKeychainQueryTest, PasswordIsAViewOfTheSecret) {
  KcKeychainQuery *query = Query(kService, @"editor");
  EXPECT_EQ([query password], nil);
  EXPECT_EQ([query passwordObject], nil);
  [query setPassword:@""];
  EXPECT_NE([query passwordData], nil);
  EXPECT_EQ([query password], nil);
  EXPECT_EQ([query passwordObject], nil);
  [query setPassword:@"ü"];
  EXPECT_EQ([[query passwordData] length], 2u);
  [query setPasswordData:[NSData dataWithBytes:"\xff\xfe" length:2]];
  EXPECT_EQ([query password], nil);
}

TEST_F(KcKeychainQueryTest, KeepsObjects) {
  NSDictionary *login =
      @{@"user" : @"editor 🎬",
        @"hosts" : @[ @"a", @(7) ],
        @"key" : [NSData dataWithBytes:"\0" length:1]};
  KcKeychainQuery *saved = Query(kService, @"object");
  [saved setPasswordObject:login];
  EXPECT_TRUE([saved save:NULL]);
  KcKeychainQuery *fetched = Query(kService, @"object");
  ASSERT_TRUE([fetched fetch:NULL]);
  EXPECT_TRUE([login isEqual:(id)[fetched passwordObject]]);
  // Somebody may have stored another kind of secret under the same name.
  for (const char *secret :
       {"plain password", "{ a = 1; }", "<?xml version=\"1.0\"?><plist><array/></plist>", "bplist00"}) {
    [fetched setPasswordData:[NSData dataWithBytes:secret length:strlen(secret)]];
    EXPECT_EQ([fetched passwordObject], nil) << secret;
  }
}

TEST_F(KcKeychainQueryTest, SynchronisationNarrowsTheSearch) {
  EXPECT_EQ(Save(Query(@"both", KcKeychainSynchronizationModeYes), @"synchronised"), 0);
  EXPECT_EQ(Save(Query(@"both", KcKeychainSynchronizationModeNo), @"local"), 0);
  EXPECT_EQ(Save(Query(@"both", KcKeychainSynchronizationModeNo), @"newer"), 0);
  EXPECT_EQ([[Query(@"both", KcKeychainSynchronizationModeAny) fetchAll:NULL] count], 2u);
  KcKeychainQuery *synchronised = Query(@"both", KcKeychainSynchronizationModeYes);
  ASSERT_TRUE([synchronised fetch:NULL]);
  EXPECT_STREQ([[synchronised password] UTF8String], "synchronised");
  NSDictionary *item = [[Query(@"both", KcKeychainSynchronizationModeYes) fetchAll:NULL] lastObject];
  EXPECT_TRUE([[item objectForKey:(id)kSecAttrSynchronizable] boolValue]);
  EXPECT_TRUE([synchronised deleteItem:NULL]);
  EXPECT_FALSE([Query(@"both", KcKeychainSynchronizationModeYes) fetch:NULL]);
  EXPECT_TRUE([Query(@"both", KcKeychainSynchronizationModeNo) fetch:NULL]);
}

// A store that took a second item of a name would hide that a save had not deleted the first.
TEST_F(KcKeychainQueryTest, TheStoreRefusesASecondItemOfTheSameName) {
  NSMutableDictionary *item = [NSMutableDictionary
      dictionaryWithObjectsAndKeys:(id)kSecClassGenericPassword, (id)kSecClass, kService, (id)kSecAttrService,
                                   @"editor", (id)kSecAttrAccount, [NSData data], (id)kSecValueData, nil];
  for (const BOOL synchronised : {NO, YES}) {
    [item setObject:@(synchronised) forKey:(id)kSecAttrSynchronizable];
    EXPECT_EQ(SecItemAdd((CFDictionaryRef)item, nullptr), errSecSuccess);
    EXPECT_EQ(SecItemAdd((CFDictionaryRef)item, nullptr), errSecDuplicateItem);
  }
}
