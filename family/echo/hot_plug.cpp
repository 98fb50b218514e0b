// SPDX-License-Identifier: MIT
// Arrivals and removals, for this family.
#include "transport/hot_plug.h"
#include "family/echo/echo.h"

// What an arrival tells goes to record 0, whichever device that is; the record added stays empty.
int zelecho_ChkAddArrival(const char* name) {
    return zel::addArrival(name, zel::kEchoIdentity, zel::kEchoIdentity, &DevDat[0]);
}

int zelEchoChkDelRemoval(const char* name) { return zel::removeDevice(name); }
