// SPDX-License-Identifier: MIT
// The magnetic stripe family: its exported operations.
#pragma once

#include "frame/zelTagExport.h"

ZELTAGAPI_BEGIN

// Defaults of every record: which field of which track is the active identifier.
ZELTAGAPI_EXPORT void zelband_Init(void);

// Closes all devices: USBDisconnect().
ZELTAGAPI_EXPORT void zelband_Exit(void);

ZELTAGAPI_END
