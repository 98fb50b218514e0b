// SPDX-License-Identifier: MIT
// Defines an exported variable that frame/zelTagState.h declares: ZEL_EXPORTED(name, initial
// value).
//
// The library reaches it as zelTagAPI_NAME; its told name is a weak alias of that.
#pragma once

#include "frame/zelTagState.h"

#ifdef __ELF__
#define ZEL_LABEL(name) __asm__("zelTagAPI_" #name)
#define ZEL_ALIAS(name)                                                                            \
    extern "C" ZELTAGAPI_EXPORT decltype(name) zelAlias_##name __asm__(#name)                      \
        __attribute__((weak, alias("zelTagAPI_" #name)));
#else
#define ZEL_LABEL(name) __asm__("_" #name)
#define ZEL_ALIAS(name)
#endif

#define ZEL_EXPORTED(name, ...)                                                                    \
    constinit decltype(name) name = __VA_ARGS__;                                                   \
    ZEL_ALIAS(name)
