#import "KcKeychain.h"

#import "KcKeychainQuery.h"

static KcKeychainQuery *Query(NSString *service, NSString *account) {
  KcKeychainQuery *query = [[[KcKeychainQuery alloc] init] autorelease];
  [query setService:service];
  [query setAccount:account];
  return query;
}

@implementation KcKeychain

+ (NSString *)passwordForService:(NSString *)service account:(NSString *)account {
  return [self passwordForService:service account:account error:NULL];
}

+ (NSString *)passwordForService:(NSString *)service account:(NSString *)account error:(NSError **)error {
  KcKeychainQuery *query = Query(service, account);
  [query fetch:error];
  return [query password];
}

+ (BOOL)deletePasswordForService:(NSString *)service account:(NSString *)account {
  return [self deletePasswordForService:service account:account error:NULL];
}

+ (BOOL)deletePasswordForService:(NSString *)service account:(NSString *)account error:(NSError **)error {
  return [Query(service, account) deleteItem:error];
}

+ (BOOL)setPassword:(NSString *)password forService:(NSString *)service account:(NSString *)account {
  return [self setPassword:password forService:service account:account error:NULL];
}

+ (BOOL)setPassword:(NSString *)password
         forService:(NSString *)service
            account:(NSString *)account
              error:(NSError **)error {
  KcKeychainQuery *query = Query(service, account);
  [query setPassword:password];
  return [query save:error];
}

+ (NSArray *)allAccounts {
  return [self allAccounts:NULL];
}

+ (NSArray *)allAccounts:(NSError **)error {
  return [self accountsForService:nil error:error];
}

+ (NSArray *)accountsForService:(NSString *)service {
  return [self accountsForService:service error:NULL];
}

+ (NSArray *)accountsForService:(NSString *)service error:(NSError **)error {
  return [Query(service, nil) fetchAll:error];
}

@end
