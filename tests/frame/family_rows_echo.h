// SPDX-License-Identifier: MIT
// Rows of the calls of presence sensors.
#pragma once

#include "tests/frame/family_table.h"

namespace zel::test {

// no device, zelTag, zelBand, zelEcho, another product, a simulated reader

inline constexpr Row kSensorRows[] = {
    {ZEL_CALL(GetSonarParms(zeros<sSonarParms>())), kNo, kNo, kNo, 0, kNo, kNo},
    {ZEL_CALL(SetSonarParms(zeros<sSonarParms>())), kNo, kNo, kNo, 0, kNo, kNo},
    {ZEL_CALL(GetWalkAwayParms(zeros<sWalkAwayParms>())), kNo, kNo, kNo, 0, kNo, kNo},
    {ZEL_CALL(SetWalkAwayParms(zeros<sWalkAwayParms>())), kNo, kNo, kNo, 0, kNo, kNo},
    {ZEL_CALL(GetWalkUpParms(zeros<sWalkUpParms>())), kNo, kNo, kNo, 0, kNo, kNo},
    {ZEL_CALL(SetWalkUpParms(zeros<sWalkUpParms>())), kNo, kNo, kNo, 0, kNo, kNo},
    {ZEL_CALL(GetIdleParms(zeros<sIdleParms>())), kNo, kNo, kNo, 0, kNo, kNo},
    {ZEL_CALL(SetIdleParms(zeros<sIdleParms>())), kNo, kNo, kNo, 1, kNo, kNo},
    {ZEL_CALL(GetObjRangeInfo(zeros<sRangeInfo>())), kNo, kNo, kNo, 0, kNo, kNo},
    {ZEL_CALL(HaltKBSends(1)), kNo, kNo, kNo, 0, kNo, kNo},
};

} // namespace zel::test
