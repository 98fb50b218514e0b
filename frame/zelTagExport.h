/* SPDX-License-Identifier: MIT */
/* How the public headers declare what the library exports. */
#ifndef ZELTAGAPI_EXPORT_H
#define ZELTAGAPI_EXPORT_H

#ifdef __cplusplus
#define ZELTAGAPI_BEGIN extern "C" {
#define ZELTAGAPI_END }
#else
#define ZELTAGAPI_BEGIN
#define ZELTAGAPI_END
#endif

#define ZELTAGAPI_EXPORT __attribute__((visibility("default")))
#define ZELTAGAPI_PRINTF(text, first) __attribute__((__format__(__printf__, text, first)))

/* On ELF an application's own variable with the name of an exported one would take its place
 * inside the library. So the library reaches each of its variables by a name of its own,
 * zelTagAPI_NAME, and NAME is a weak alias of it (frame/state/exported.h). An application that
 * declares NAME through the public headers shares the one object. The two-level namespace of Mach-O
 * needs none of this. */
#if defined(ZELTAGAPI_BUILDING) && defined(__ELF__)
#define ZELTAGAPI_DATA(declaration, name)                                                          \
    extern ZELTAGAPI_EXPORT declaration __asm__("zelTagAPI_" #name)
#else
#define ZELTAGAPI_DATA(declaration, name) extern ZELTAGAPI_EXPORT declaration
#endif

#endif
