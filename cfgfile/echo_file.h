// SPDX-License-Identifier: MIT
// The text file of a presence sensor's settings. Both directions work on the library's copy of the
// settings alone.
#pragma once

#include "frame/zelTagExport.h"

#include <stdint.h>

ZELTAGAPI_BEGIN

// Writes the active device's settings. 1, or 0 when the file can't be created.
ZELTAGAPI_EXPORT int zelecho_WriteDevCfgToFile(const char* name);

// Takes what a file tells into the active device's settings, and marks all of them for writing. Any
// text passes. 1, or 0 for a file that can't be opened.
ZELTAGAPI_EXPORT int zelecho_ReadDevCfgFmFile(const char* name);

// Stores the value of one key, which is compared without case, in a sensor's settings (a tsEcho).
// 1, or 0 for a key that no record has.
ZELTAGAPI_EXPORT int ProcessSonarTokenVal(const char* name, int value, uint16_t* area);

ZELTAGAPI_END
