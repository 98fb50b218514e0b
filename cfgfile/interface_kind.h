// SPDX-License-Identifier: MIT
// Which kind of magnetic stripe reader a file is for. No file of this library tells; those of other
// tools may.
#pragma once

#include "frame/zelTagExport.h"

ZELTAGAPI_BEGIN

// 0 for USB, 1 for a serial line, 65535 when the file doesn't tell or can't be opened.
ZELTAGAPI_EXPORT int zelband_ReadDevTypeFromFile(const char* name);

ZELTAGAPI_END
