// The calls of CoreFoundation that the plug-in uses. As on macOS, a CFString is an NSString and a CFURL an NSURL. What
// a function with Create or Copy in its name returns, the caller releases with CFRelease.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef uint8_t UInt8;
typedef uint32_t UInt32;
typedef int16_t SInt16;
typedef int32_t SInt32;
typedef uint16_t UniChar;
typedef unsigned char Boolean;
typedef SInt32 OSStatus;
typedef SInt16 OSErr;

typedef signed long CFIndex;
typedef const void* CFTypeRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef const struct __CFString* CFStringRef;
typedef const struct __CFURL* CFURLRef;
typedef struct __CFError* CFErrorRef;
typedef struct {
  CFIndex location;
  CFIndex length;
} CFRange;

static inline CFRange CFRangeMake(CFIndex location, CFIndex length) {
  CFRange range = {location, length};
  return range;
}

typedef UInt32 CFStringEncoding;
enum { kCFStringEncodingUTF8 = 0x08000100, kCFStringEncodingUTF32LE = 0x1c000100 };

typedef CFIndex CFURLPathStyle;
enum { kCFURLPOSIXPathStyle = 0 };

#define kCFAllocatorDefault ((CFAllocatorRef)0)

void CFRelease(CFTypeRef object);

/// Null when the bytes are not text of that encoding.
CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean external);
CFStringRef CFStringCreateWithCharacters(CFAllocatorRef allocator, const UniChar* units, CFIndex count);

/// The number of UTF-16 units.
CFIndex CFStringGetLength(CFStringRef string);
void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* buffer);

/// Converts the range into at most capacity bytes, without a terminator and without cutting a character in two. Returns
/// the number of UTF-16 units converted; used, which may be null, gets the number of bytes.
CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding, UInt8 lossByte, Boolean external,
                         UInt8* buffer, CFIndex capacity, CFIndex* used);

/// Null when no address can be made of the path.
CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef allocator, CFStringRef path, CFURLPathStyle style,
                                       Boolean isFolder);
CFStringRef CFURLCopyFileSystemPath(CFURLRef url, CFURLPathStyle style);
Boolean CFURLResourceIsReachable(CFURLRef url, CFErrorRef* error);

#ifdef __cplusplus
}
#endif
