// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <objc/objc.h>
#include <os/availability.h>

extern "C" BOOL sel_isEqual(SEL _Nonnull left, SEL _Nonnull right) API_AVAILABLE(macos(10.0));
