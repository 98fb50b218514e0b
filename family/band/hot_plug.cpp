// SPDX-License-Identifier: MIT
// Arrivals and removals, for this family.
#include "transport/hot_plug.h"
#include "family/band/band.h"

// The name is that of a proximity reader, the ownership asked for this family's own.
int zelband_ChkAddArrival(const char* name) {
    return zel::addArrival(name, zel::kTagIdentity, zel::kBandIdentity, nullptr);
}

int zelband_ChkDelRemoval(const char* name) { return zel::removeDevice(name); }
