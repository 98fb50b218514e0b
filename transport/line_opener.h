/* SPDX-License-Identifier: MIT */
/* The seam between the library and the serial lines of the system: the one call that opens a line.
 *
 * Contract
 * - The function is called on the application's thread with a path that begins with "/dev/", and
 *   with no path other than those that SetComLinux() registered.
 * - It returns a descriptor for reading and writing, or -1. The library owns the descriptor, makes
 *   it blocking or not as it needs, and closes it.
 * - What it opens may be a terminal or any other byte stream: on one that isn't a terminal the
 *   calls that set the speed, drain and discard fail and nothing is lost.
 */
#ifndef ZELTAGAPI_LINE_OPENER_H
#define ZELTAGAPI_LINE_OPENER_H

#include "frame/zelTagExport.h"

ZELTAGAPI_BEGIN

typedef int (*zelLineOpener)(const char* path);

/** Replaces the function that opens a line; lines that are open stay so.
 * @param opener the new function; null: the system's own again */
ZELTAGAPI_EXPORT void CPort_UseOpener(zelLineOpener opener);

ZELTAGAPI_END

#endif
