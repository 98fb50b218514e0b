// SPDX-License-Identifier: MIT
// Arrivals, for this family.
#include "transport/hot_plug.h"
#include "family/tag/tag.h"

int zeltag_ChkAddArrival(const char* name) {
    return zel::addArrival(name, zel::kTagIdentity, zel::kTagIdentity, nullptr);
}
