// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

// The C library's headers show everything that they have, as on macOS.
#ifndef _GNU_SOURCE
#define _GNU_SOURCE 1
#endif

#include_next <features.h>
