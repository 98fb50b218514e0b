// SPDX-License-Identifier: MIT
// The list of further USB identities that count as proximity readers.
#pragma once

#include "frame/zelTagExport.h"

ZELTAGAPI_BEGIN

// Takes one line of the list: keys of the form KEY="value". A line without vendor, product and name
// makes no row; its other values are kept where they go.
ZELTAGAPI_EXPORT void fillvidpidList(char* line);

// Copies the value of the first KEY="value" in a line, `size` bytes at most; `out` is cleared first
// and stays so when there is none. A value of `size` bytes or more has no terminator.
ZELTAGAPI_EXPORT void parseStrValue(char* line, const char* key, char* out, int size);

ZELTAGAPI_END
