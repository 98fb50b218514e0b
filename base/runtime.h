// SPDX-License-Identifier: MIT
// The clock, and small replacements for calls that the platform spells differently.
#pragma once

#include "frame/zelTagExport.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>

ZELTAGAPI_BEGIN

// Milliseconds of the time of day. Jumps when the system's clock is set: compare only by
// subtraction.
ZELTAGAPI_EXPORT std::uint64_t GetTickCount(void);

// Compares without regard to case, byte by byte in the current locale. Returns the difference of
// the last pair compared, 0 for equal texts.
ZELTAGAPI_EXPORT int _stricmp(const char* a, const char* b);

// As _stricmp over the first count + 1 pairs; 0 for a count of 0. The pair past the count is
// compared too, so a prefix of length count matches only a text that ends there.
ZELTAGAPI_EXPORT int _strnicmp(const char* a, const char* b, std::size_t count);

// Opens a file and stores its stream. Returns 0, or errno with a null stream stored.
ZELTAGAPI_EXPORT int fopen_s(std::FILE** file, const char* name, const char* mode);

ZELTAGAPI_END
