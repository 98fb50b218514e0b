// SPDX-License-Identifier: MIT
// Start-up and shut-down of the magnetic stripe family.
#include "family/band/band.h"
#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"

void zelband_Init() {
    for (tsDevDat& record : DevDat) {
        record.Band.iActTrack = 2;
        record.Band.iActField = 0;
        record.Band.iActOffset = 0;
        record.Band.iActLength = ZELTAGAPI_ID_SIZE;
        record.Band.iActTerm = 255; // no character
    }
}

void zelband_Exit() { USBDisconnect(); }
