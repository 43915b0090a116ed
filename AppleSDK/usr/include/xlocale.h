// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <ctype.h>
#include <locale.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <wchar.h>
#include <wctype.h>

// What the C++ library asks of a locale and Linux's C library lacks.
#ifdef __cplusplus
extern "C" {
#endif

int ___mb_cur_max_l(locale_t locale);
int asprintf_l(char **text, locale_t locale, const char *format, ...);
wint_t btowc_l(int byte, locale_t locale);
struct lconv *localeconv_l(locale_t locale);
size_t mbrlen_l(const char *bytes, size_t count, mbstate_t *state, locale_t locale);
size_t mbrtowc_l(wchar_t *out, const char *bytes, size_t count, mbstate_t *state, locale_t locale);
size_t mbsnrtowcs_l(wchar_t *out, const char **bytes, size_t count, size_t room, mbstate_t *state, locale_t locale);
size_t mbsrtowcs_l(wchar_t *out, const char **bytes, size_t room, mbstate_t *state, locale_t locale);
int mbtowc_l(wchar_t *out, const char *bytes, size_t count, locale_t locale);
int snprintf_l(char *text, size_t room, locale_t locale, const char *format, ...);
int sscanf_l(const char *text, locale_t locale, const char *format, ...);
double strtod_l(const char *text, char **end, locale_t locale);
float strtof_l(const char *text, char **end, locale_t locale);
long double strtold_l(const char *text, char **end, locale_t locale);
long long strtoll_l(const char *text, char **end, int base, locale_t locale);
unsigned long long strtoull_l(const char *text, char **end, int base, locale_t locale);
size_t wcrtomb_l(char *out, wchar_t character, mbstate_t *state, locale_t locale);
size_t wcsnrtombs_l(char *out, const wchar_t **text, size_t count, size_t room, mbstate_t *state, locale_t locale);
int wctob_l(wint_t character, locale_t locale);

#ifdef __cplusplus
}
#endif

#define MB_CUR_MAX_L(locale) (___mb_cur_max_l(locale))
