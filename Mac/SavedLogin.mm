#import "SavedLogin.h"

#import "KcKeychain/KcKeychainQuery.h"

NSString *const kSavedSubdomainKey = @"orvaneSubdomain";
NSString *const kSavedUsernameKey = @"un";
NSString *const kSavedPasswordKey = @"p";

KcKeychainQuery *SavedLoginQuery() {
  KcKeychainQuery *query = [[[KcKeychainQuery alloc] init] autorelease];
  [query setService:@"OrvanePluginPremiere"];
  [query setAccount:@"userData"];
  return query;
}
