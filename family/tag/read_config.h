// SPDX-License-Identifier: MIT
// Reading a reader's configuration.
#pragma once

#include "frame/zelTagExport.h"

ZELTAGAPI_BEGIN

// Reads all configurations of the active device, the highest first, and goes back to the one that
// was active. 1 or 0.
ZELTAGAPI_EXPORT int zeltag_ReadCfg(void);

// Reads the active configuration, the device's IDs and its texts. 1 or 0.
ZELTAGAPI_EXPORT int zeltag_ReadCfgOneConfig(void);

ZELTAGAPI_END
