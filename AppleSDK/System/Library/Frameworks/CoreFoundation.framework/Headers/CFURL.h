// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFError.h>

typedef const struct CF_BRIDGED_TYPE(NSURL) __CFURL *CFURLRef;

typedef CFIndex CFURLPathStyle;
enum : CFURLPathStyle { kCFURLPOSIXPathStyle = 0 };

struct FSRef;

extern "C" {
CFURLRef _Null_unspecified CFURLCreateWithFileSystemPath(CFAllocatorRef _Null_unspecified allocator, CFStringRef _Null_unspecified path, CFURLPathStyle style, Boolean isDirectory);
CFStringRef _Null_unspecified CFURLCopyFileSystemPath(CFURLRef _Null_unspecified url, CFURLPathStyle style);
Boolean CFURLResourceIsReachable(CFURLRef _Null_unspecified url, CFErrorRef _Null_unspecified *_Null_unspecified error) API_AVAILABLE(macos(10.6));
CFURLRef _Null_unspecified CFURLCreateFromFSRef(CFAllocatorRef _Null_unspecified allocator, const struct FSRef *_Null_unspecified reference) API_DEPRECATED("Not supported", macos(10.0, 10.9));
}
