// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include_next <errno.h>

#ifdef __cplusplus
extern "C" {
#endif

int *__error(void);

#ifdef __cplusplus
}
#endif

#undef errno
#define errno (*__error())
