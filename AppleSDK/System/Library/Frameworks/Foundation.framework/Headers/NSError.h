// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#import <Foundation/NSDictionary.h>
#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString *NSErrorDomain;
typedef NSString *NSErrorUserInfoKey;

extern "C" {
extern NSErrorUserInfoKey const NSLocalizedDescriptionKey;
}

@interface NSError : NSObject <NSCopying, NSSecureCoding>
@property (readonly) NSInteger code;
@property (readonly, copy) NSString *localizedDescription;
+ (instancetype)errorWithDomain:(NSErrorDomain)domain code:(NSInteger)code userInfo:(nullable NSDictionary<NSErrorUserInfoKey, id> *)information;
@end

NS_ASSUME_NONNULL_END
