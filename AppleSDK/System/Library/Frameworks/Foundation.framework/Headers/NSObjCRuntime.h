// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <objc/objc.h>
#include <os/availability.h>
#include <stdarg.h>

#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#define NS_DESIGNATED_INITIALIZER __attribute__((objc_designated_initializer))
#define NS_REQUIRES_SUPER __attribute__((objc_requires_super))
#define NS_RETURNS_INNER_POINTER __attribute__((objc_returns_inner_pointer))
#define NS_FORMAT_FUNCTION(F, A) __attribute__((format(__NSString__, F, A)))
#define NS_REQUIRES_NIL_TERMINATION __attribute__((sentinel(0, 1)))
#define NS_ENUM(type, name) enum name : type name; enum name : type
#define NS_OPTIONS(type, name) type name; enum __attribute__((flag_enum)) : type
#define MIN(A, B) ({ __typeof__(A) a_ = (A); __typeof__(B) b_ = (B); a_ < b_ ? a_ : b_; })
#define MAX(A, B) ({ __typeof__(A) a_ = (A); __typeof__(B) b_ = (B); a_ < b_ ? b_ : a_; })

typedef long NSInteger;
typedef unsigned long NSUInteger;

typedef NS_ENUM(NSInteger, NSComparisonResult) { NSOrderedAscending = -1L, NSOrderedSame, NSOrderedDescending };

static const NSInteger NSNotFound = 0x7fffffffffffffffL;

NS_ASSUME_NONNULL_BEGIN

@class NSString;

extern "C" {
extern double NSFoundationVersionNumber;
Class _Nullable NSClassFromString(NSString *name);
void NSLog(NSString *format, ...) NS_FORMAT_FUNCTION(1, 2);
}

NS_ASSUME_NONNULL_END
