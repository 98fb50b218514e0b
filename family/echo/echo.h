// SPDX-License-Identifier: MIT
// The presence sensor family: its exported operations.
#pragma once

#include "frame/zelTagExport.h"

ZELTAGAPI_BEGIN

// An empty table, every record's sensor part cleared, all transports searched.
ZELTAGAPI_EXPORT void zelecho_Init(void);

// Does nothing.
ZELTAGAPI_EXPORT void zelecho_Exit(void);

ZELTAGAPI_END
