// SPDX-License-Identifier: MIT
// Devices on a serial line.
#pragma once

#include "frame/zelTagExport.h"

ZELTAGAPI_BEGIN

// Clears the registered device paths of ports 1 to 16. Row 0 belongs to no port and stays.
ZELTAGAPI_EXPORT void CPort_Init(void);

ZELTAGAPI_END
