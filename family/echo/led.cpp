// SPDX-License-Identifier: MIT
// The LED flags of the presence sensor, in memory.
#include "family/echo/echo.h"
#include "frame/state/state.h"

using namespace zel;

int zelecho_GetLEDCtrl() {
    return hasActiveDevice() ? activeRecord().Echo.sSonarParms.LEDFlagsS : -1;
}

// Leaves bDirtySonar alone: the flags reach the sensor when its settings are written for another
// reason.
int zelecho_SetLEDCtrl(short flags) {
    if (!hasActiveDevice())
        return 0;
    activeRecord().Echo.sSonarParms.LEDFlagsS = flags;
    return flags;
}
