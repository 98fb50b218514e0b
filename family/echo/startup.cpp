// SPDX-License-Identifier: MIT
// Start-up and shut-down of the presence sensor family.
#include "family/echo/echo.h"
#include "frame/state/state.h"

void zelecho_Init() {
    iActDev = 0;
    iDevsFnd = 0;
    for (tsDevDat& record : DevDat)
        record.Echo = {};
    iCnctDevType = zel::kAllTransports;
}

void zelecho_Exit() {}
