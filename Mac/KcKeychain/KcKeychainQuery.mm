#import "KcKeychainQuery.h"

#import <Cocoa/Cocoa.h>
#import <Security/Security.h>

#include <cmath>
#include <cstring>

#include "Deployment.h"

// The last Foundation that does not know synchronised items.
static const double kLastFoundationWithoutSynchronization = 945.18;

static void Report(OSStatus status, NSError **error) {
  if (status != errSecSuccess && error) *error = [KcKeychainQuery errorWithCode:status];
}

static BOOL BeginsWith(NSData *data, const char *text) {
  const size_t length = strlen(text);
  return [data length] >= length && memcmp([data bytes], text, length) == 0;
}

// Whether the data is what NSKeyedArchiver writes: a binary or an XML property list with its mark. Asking first spares
// the unarchiver's exception, which leaks, and so does reading any other text as a property list.
static BOOL IsKeyedArchive(NSData *data) {
  if (!BeginsWith(data, "bplist") && !BeginsWith(data, "<?xml")) return NO;
  id content = [NSPropertyListSerialization propertyListWithData:data
                                                         options:NSPropertyListImmutable
                                                          format:NULL
                                                           error:NULL];
  return
      [content isKindOfClass:[NSDictionary class]] && [[content objectForKey:@"$archiver"] isEqual:@"NSKeyedArchiver"];
}

@implementation KcKeychainQuery

@synthesize account;
@synthesize service;
@synthesize label;
@synthesize passwordData;
@synthesize synchronizationMode;

- (void)dealloc {
  [account release];
  [service release];
  [label release];
  [passwordData release];
  [super dealloc];
}

- (NSString *)password {
  if ([passwordData length] == 0) return nil;
  return [[[NSString alloc] initWithData:passwordData encoding:NSUTF8StringEncoding] autorelease];
}

- (void)setPassword:(NSString *)password {
  [self setPasswordData:[password dataUsingEncoding:NSUTF8StringEncoding]];
}

- (id<NSCoding>)passwordObject {
  if ([passwordData length] == 0 || !IsKeyedArchive(passwordData)) return nil;
  @try {
    return [NSKeyedUnarchiver unarchiveObjectWithData:passwordData];
  } @catch (NSException *exception) {
    NSLog(@"#orvanevorrel the saved secret is not an archived object: %@", [exception reason]);
  }
  return nil;
}

- (void)setPasswordObject:(id<NSCoding>)object {
  [self setPasswordData:[NSKeyedArchiver archivedDataWithRootObject:object]];
}

+ (BOOL)isSynchronizationAvailable {
  return std::floor(NSFoundationVersionNumber) > kLastFoundationWithoutSynchronization;
}

+ (NSError *)errorWithCode:(NSInteger)status {
  if (status == errSecSuccess) return nil;
  NSString *message = nil;
  if (status == KcKeychainErrorBadArguments) {
    message = [[NSBundle mainBundle] localizedStringForKey:@"KcKeychainErrorBadArguments"
                                                     value:@""
                                                     table:@"KcKeychain"];
  } else {
    message = [(NSString *)SecCopyErrorMessageString((OSStatus)status, NULL) autorelease];
  }
  NSDictionary *information = message ? @{NSLocalizedDescriptionKey : message} : @{};
  return [NSError errorWithDomain:@ORVANE_KEYCHAIN_ERROR_DOMAIN code:status userInfo:information];
}

- (NSMutableDictionary *)query {
  NSMutableDictionary *query = [NSMutableDictionary dictionaryWithCapacity:3];
  [query setObject:(id)kSecClassGenericPassword forKey:(id)kSecClass];
  if (service) [query setObject:service forKey:(id)kSecAttrService];
  if (account) [query setObject:account forKey:(id)kSecAttrAccount];
  if ([KcKeychainQuery isSynchronizationAvailable]) {
    id value = (id)kSecAttrSynchronizableAny;
    if (synchronizationMode == KcKeychainSynchronizationModeNo) value = @(NO);
    if (synchronizationMode == KcKeychainSynchronizationModeYes) value = @(YES);
    [query setObject:value forKey:(id)kSecAttrSynchronizable];
  }
  return query;
}

- (BOOL)save:(NSError **)error {
  if (!service || !account || !passwordData) {
    Report(KcKeychainErrorBadArguments, error);
    return NO;
  }
  [self deleteItem:NULL];
  NSMutableDictionary *item = [self query];
  [item setObject:passwordData forKey:(id)kSecValueData];
  if (label) [item setObject:label forKey:(id)kSecAttrLabel];
  OSStatus status = SecItemAdd((CFDictionaryRef)item, NULL);
  Report(status, error);
  return status == errSecSuccess;
}

- (BOOL)deleteItem:(NSError **)error {
  if (!service || !account) {
    Report(KcKeychainErrorBadArguments, error);
    return NO;
  }
  NSMutableDictionary *query = [self query];
  [query setObject:@(YES) forKey:(id)kSecReturnRef];
  CFTypeRef item = NULL;
  OSStatus status = SecItemCopyMatching((CFDictionaryRef)query, &item);
  if (status == errSecSuccess) {
    status = SecKeychainItemDelete((SecKeychainItemRef)item);
    CFRelease(item);
  }
  Report(status, error);
  return status == errSecSuccess;
}

- (NSArray *)fetchAll:(NSError **)error {
  NSMutableDictionary *query = [self query];
  [query setObject:@(YES) forKey:(id)kSecReturnAttributes];
  [query setObject:(id)kSecMatchLimitAll forKey:(id)kSecMatchLimit];
  CFTypeRef items = NULL;
  OSStatus status = SecItemCopyMatching((CFDictionaryRef)query, &items);
  if (status != errSecSuccess) {
    Report(status, error);
    return nil;
  }
  return [(NSArray *)items autorelease];
}

- (BOOL)fetch:(NSError **)error {
  if (!service || !account) {
    Report(KcKeychainErrorBadArguments, error);
    return NO;
  }
  NSMutableDictionary *query = [self query];
  [query setObject:@(YES) forKey:(id)kSecReturnData];
  [query setObject:(id)kSecMatchLimitOne forKey:(id)kSecMatchLimit];
  CFTypeRef data = NULL;
  OSStatus status = SecItemCopyMatching((CFDictionaryRef)query, &data);
  if (status != errSecSuccess) {
    Report(status, error);
    return NO;
  }
  [self setPasswordData:(NSData *)data];
  CFRelease(data);
  return YES;
}

@end
