// SPDX-License-Identifier: MIT
// The text file of a magnetic stripe reader's settings. Both directions work on the library's copy
// of the settings alone.
#pragma once

#include "cfgfile/text_lines.h"
#include "frame/zelTagExport.h"

#include <cstdio>

ZELTAGAPI_BEGIN

// Writes the active device's settings. 1, or 0 when the file can't be created.
ZELTAGAPI_EXPORT int zelband_WriteDevCfgToFile(const char* name);

// Takes what a file tells into the active device's settings; the rest stays. 1, or 0 for a file
// that can't be opened or isn't one of these.
ZELTAGAPI_EXPORT int zelband_ReadDevCfgFmFile(const char* name);

ZELTAGAPI_END

namespace zel::cfgfile {

using BandLines = Pieces<257>;

// Whether the title stands in the head of the file; leaves the file behind that head.
bool hasBandTitle(std::FILE* file);

} // namespace zel::cfgfile
