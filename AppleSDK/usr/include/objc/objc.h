// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

typedef struct objc_class *Class;
struct objc_object { Class isa; };
typedef struct objc_object *id;
typedef struct objc_selector *SEL;

#if __OBJC_BOOL_IS_BOOL
typedef bool BOOL;
#else
typedef signed char BOOL;
#endif

#define YES __objc_yes
#define NO __objc_no
#define Nil nullptr
#define nil nullptr
