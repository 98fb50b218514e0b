// SPDX-License-Identifier: MIT
// The exported calls of presence sensors.
#include "family/echo/echo.h"
#include "frame/state/state.h"
#include "frame/zelTagEcho.h"

using namespace zel;

namespace {

// Calls the operation when a sensor is active; else the unsupported value.
template <class Argument> int forEcho(int (*operation)(Argument), Argument argument) {
    return activeProduct() == kEcho ? operation(argument) : unsupportedValue();
}

} // namespace

int GetSonarParms(sSonarParms* record) { return forEcho(zelecho_GetSonarParms, record); }
int SetSonarParms(sSonarParms* record) { return forEcho(zelecho_SetSonarParms, record); }

int GetWalkAwayParms(sWalkAwayParms* record) { return forEcho(zelecho_GetWalkAwayParms, record); }
int SetWalkAwayParms(sWalkAwayParms* record) { return forEcho(zelecho_SetWalkAwayParms, record); }

int GetWalkUpParms(sWalkUpParms* record) { return forEcho(zelecho_GetWalkUpParms, record); }
int SetWalkUpParms(sWalkUpParms* record) { return forEcho(zelecho_SetWalkUpParms, record); }

int GetIdleParms(sIdleParms* record) { return forEcho(zelecho_GetIdleParms, record); }
int SetIdleParms(sIdleParms* record) { return forEcho(zelecho_SetIdleParms, record); }

int GetObjRangeInfo(sRangeInfo* record) { return forEcho(zelecho_GetObjRangeInfo, record); }

int HaltKBSends(int halt) { return forEcho(zelecho_HaltKBSends, halt); }
