// SPDX-License-Identifier: MIT
// Arrivals, for this family.
#include "family/tag/tag.h"
#include "transport/device_list.h"

int zeltag_ChkAddArrival(const char* name) {
    return zel::addArrival(name, {0x5A3E, 0x9D23, 0x5A3E, 0x9D23}, nullptr);
}
