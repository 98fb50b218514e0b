// SPDX-License-Identifier: MIT
// The exported calls of presence sensors: nothing serves them yet.
#include "frame/state.h"
#include "frame/zelTagEcho.h"

using zel::unsupportedValue;

int GetSonarParms(sSonarParms*) { return unsupportedValue(); }
int SetSonarParms(sSonarParms*) { return unsupportedValue(); }

int GetWalkAwayParms(sWalkAwayParms*) { return unsupportedValue(); }
int SetWalkAwayParms(sWalkAwayParms*) { return unsupportedValue(); }

int GetWalkUpParms(sWalkUpParms*) { return unsupportedValue(); }
int SetWalkUpParms(sWalkUpParms*) { return unsupportedValue(); }

int GetIdleParms(sIdleParms*) { return unsupportedValue(); }
int SetIdleParms(sIdleParms*) { return unsupportedValue(); }

int GetObjRangeInfo(sRangeInfo*) { return unsupportedValue(); }

int HaltKBSends(int) { return unsupportedValue(); }
