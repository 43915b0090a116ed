// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <CoreFoundation/CFBase.h>

typedef UInt32 CFStringEncoding;
enum : CFStringEncoding { kCFStringEncodingUTF8 = 0x08000100, kCFStringEncodingUTF32LE = 0x1c000100 };

extern "C" {
CFStringRef _Null_unspecified CFStringCreateWithBytes(CFAllocatorRef _Null_unspecified allocator, const UInt8 *_Null_unspecified bytes, CFIndex count, CFStringEncoding encoding, Boolean isExternal);
CFStringRef _Null_unspecified CFStringCreateWithCharacters(CFAllocatorRef _Null_unspecified allocator, const UniChar *_Null_unspecified units, CFIndex count);
CFIndex CFStringGetLength(CFStringRef _Null_unspecified string);
void CFStringGetCharacters(CFStringRef _Null_unspecified string, CFRange range, UniChar *_Null_unspecified buffer);
CFIndex CFStringGetBytes(CFStringRef _Null_unspecified string, CFRange range, CFStringEncoding encoding, UInt8 lossByte, Boolean isExternal, UInt8 *_Null_unspecified buffer, CFIndex room, CFIndex *_Null_unspecified used);
}
