// SPDX-License-Identifier: MIT
// The family's own forms of the calls on the device table.
#include "family/tag/tag.h"
#include "frame/state.h"

int zeltag_SetActDev(short device) {
    if (device < 0 || device >= iDevsFnd || device >= zel::kMaxDevices)
        return 0;
    iActDev = device;
    return 1;
}

int zeltag_GetActDev() { return iActDev; }

int zeltag_GetDevCnt() { return iDevsFnd; }
