// SPDX-License-Identifier: MIT
// Writing a reader's configuration.
#pragma once

#include "frame/zelTagState.h"

ZELTAGAPI_BEGIN

// Writes all configurations of the active device, the highest first. 1 or 0.
ZELTAGAPI_EXPORT int zeltag_WriteCfg(void);

// Writes the active configuration, then pauses as long as the reader needs: 20 ms or 1.2 s. 1 or 0.
ZELTAGAPI_EXPORT int zeltag_WriteCfgOneConfig(void);

// Writes what is marked of the active configuration and commits it. 1 or 0.
ZELTAGAPI_EXPORT int zeltag_write_cfg(void);

// Writes block 2 of a configuration at once, with no commit. 1 or 0.
ZELTAGAPI_EXPORT int WrtIDFrmtParms2(tsTagCfg* config);

// Returns the reader to its factory defaults, pauses 1.2 s and reads the result back. 1 or 0.
ZELTAGAPI_EXPORT int zeltag_ResetFactoryDflts(void);

ZELTAGAPI_END
