// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#include_next <assert.h>

#ifdef __cplusplus
extern "C" {
#endif

_Noreturn void __assert_rtn(const char *function, const char *file, int line, const char *expression);

#ifdef __cplusplus
}
#endif

#ifndef NDEBUG
#undef assert
#define assert(expression) ((expression) ? (void)0 : __assert_rtn(__func__, __FILE__, __LINE__, #expression))
#endif
