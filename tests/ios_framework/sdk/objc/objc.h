// The runtime's types.
#pragma once

#ifndef __cplusplus
#include <stdbool.h>
#endif

typedef struct objc_class* Class;
typedef struct objc_object {
  Class isa;
} * id;
typedef struct objc_selector* SEL;
typedef bool BOOL;
typedef long NSInteger;
typedef unsigned long NSUInteger;
#define YES __objc_yes
#define NO __objc_no
#ifdef __cplusplus
#define nil nullptr
#else
#define nil ((id)0)
#endif

#ifdef __cplusplus
extern "C" {
#endif
extern Class objc_getClass(const char* name);
extern SEL sel_registerName(const char* name);
extern const char* sel_getName(SEL selector);
extern int objc_sync_enter(id object);
extern int objc_sync_exit(id object);
#ifdef __cplusplus
}
#endif
