#import "SavedLogin.h"

#import "KcKeychain/KcKeychainQuery.h"
#import "PlatformJson.h"
#include "PlatformString.h"

namespace {

// The members of the JSON object that the item holds.
NSString *const kSubdomainKey = @"orvaneSubdomain";
NSString *const kUsernameKey = @"un";
NSString *const kPasswordKey = @"p";

KcKeychainQuery *Query() {
  KcKeychainQuery *query = [[[KcKeychainQuery alloc] init] autorelease];
  [query setService:@"OrvanePluginPremiere"];
  [query setAccount:@"userData"];
  return query;
}

std::string Text(id object, NSString *key) {
  if (![object isKindOfClass:[NSDictionary class]]) return std::string();
  id text = [object objectForKey:key];
  return [text isKindOfClass:[NSString class]] ? ToUtf8(text) : std::string();
}

}  // namespace

SavedLogin SavedLoginFromText(NSString *text) {
  NSData *json = [text dataUsingEncoding:NSUTF8StringEncoding];
  id object = ParseJson([json bytes], [json length], NSJSONReadingMutableLeaves);
  return {Text(object, kSubdomainKey), Text(object, kUsernameKey), Text(object, kPasswordKey)};
}

BOOL ReadSavedLogin(SavedLogin *login, NSError **error) {
  KcKeychainQuery *query = Query();
  if (![query fetch:error]) return NO;
  *login = SavedLoginFromText([query password]);
  return YES;
}

BOOL SaveLogin(const SavedLogin &login, NSError **error) {
  NSDictionary *object = @{
    kSubdomainKey : FromUtf8(login.subdomain),
    kUsernameKey : FromUtf8(login.username),
    kPasswordKey : FromUtf8(login.password)
  };
  NSError *jsonError = nil;
  NSData *json = [NSJSONSerialization dataWithJSONObject:object options:0 error:&jsonError];
  if (!json) NSLog(@"#orvanevorrel error encoding rememberMe data: %@", jsonError);
  KcKeychainQuery *query = Query();
  if (json) [query setPassword:[[[NSString alloc] initWithData:json encoding:NSUTF8StringEncoding] autorelease]];
  return [query save:error];
}

BOOL ForgetSavedLogin(NSError **error) {
  return [Query() deleteItem:error];
}
