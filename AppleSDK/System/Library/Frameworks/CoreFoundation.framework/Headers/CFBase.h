// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <MacTypes.h>
#include <os/availability.h>

#define CF_BRIDGED_TYPE(T) __attribute__((objc_bridge(T)))

typedef unsigned long CFTypeID;
typedef unsigned long CFOptionFlags;
typedef unsigned long CFHashCode;
typedef signed long CFIndex;
typedef const void *CFTypeRef;
typedef const struct CF_BRIDGED_TYPE(id) __CFAllocator *CFAllocatorRef;
typedef const struct CF_BRIDGED_TYPE(NSString) __CFString *CFStringRef;

typedef struct {
  CFIndex location;
  CFIndex length;
} CFRange;

static inline CFRange CFRangeMake(CFIndex location, CFIndex length) {
  CFRange range = {location, length};
  return range;
}

extern "C" {
extern const CFAllocatorRef _Null_unspecified kCFAllocatorDefault;
void CFRelease(CFTypeRef _Null_unspecified object);
}
