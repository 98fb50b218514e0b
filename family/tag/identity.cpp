// SPDX-License-Identifier: MIT
// Which device is active, and its name: the family's own forms of these calls.
#include "base/text_by_character.h"
#include "family/tag/tag.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

int zeltag_SetActDev(short device) {
    if (device < 0 || device >= iDevsFnd || device >= zel::kMaxDevices)
        return 0;
    iActDev = device;
    return 1;
}

int zeltag_GetActDev() { return iActDev; }

int zeltag_GetDevCnt() { return iDevsFnd; }

int zeltag_getDevName_char(short index) {
    static constinit zel::TextOut<ZELTAGAPI_NAME_SIZE> name;
    return name.at(index, GetDevName);
}
