// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.

// The widths are the same everywhere; which of two types of one width has the name decides about overloads, format
// warnings and the names of symbols. Here as on macOS. The file is included many times.
#ifndef _APPLESDK_ALLTYPES
#define _APPLESDK_ALLTYPES
typedef long long int64_t;
typedef unsigned long long uint64_t;
typedef unsigned long long u_int64_t;
typedef long long off_t;
typedef int wint_t;
typedef unsigned int __uint32_t;
#define __DEFINED_int64_t
#define __DEFINED_uint64_t
#define __DEFINED_u_int64_t
#define __DEFINED_off_t
#define __DEFINED_wint_t
#endif

#include_next <bits/alltypes.h>
