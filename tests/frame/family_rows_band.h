// SPDX-License-Identifier: MIT
// Rows of the calls of magnetic stripe readers.
#pragma once

#include "tests/frame/family_table.h"

namespace zel::test {

// no device, zelTag, zelBand, zelEcho, another product, a simulated reader

inline constexpr Row kBandTrackRows[] = {
    {ZEL_CALL(zelBandIsDataAvailable()), kNo, kNo, 0, kNo, kNo, kNo},
    {ZEL_CALL(zelBandClearDataAvailable()), kNo, kNo, 0, kNo, kNo, kNo},
    {ZEL_CALL(zelBandClearOverrun()), 0, 0, 0, 0, 0, 0},
    {ZEL_CALL(zelBandGetTrackData(1, 1)), no(0), no(0), 1, no(0), no(0), no(0)},
    {ZEL_CALL(zelBandGetTrackData_BYTE(1, 1, 255)), kNoByte, kNoByte, 0, kNoByte, kNoByte, kNoByte},
    {ZEL_CALL(zelBandGetTrackFieldOffset(1, 1, 1, 1, 1, 1)), no(0), no(0), 1, no(0), no(0), no(0)},
    {ZEL_CALL(zelBandSetActiveID(1, 1, 1, 1)), kNo, kNo, 1, kNo, kNo, kNo},
    {ZEL_CALL(zelBandSetTrackEnables(1)), kNo, kNo, 1, kNo, kNo, kNo},
    {ZEL_CALL(zelBandGetTrackEnables()), kNo, kNo, 0, kNo, kNo, kNo},
};

inline constexpr Row kBandFieldRows[] = {
    {ZEL_CALL(zelBandSetFieldEnable(1, 1)), kNo, kNo, 1, kNo, kNo, kNo},
    {ZEL_CALL(zelBandGetFieldEnable(1)), kNo, kNo, 0, kNo, kNo, kNo},
    {ZEL_CALL(zelBandSetFieldSkip(1, 1)), kNo, kNo, 1, kNo, kNo, kNo},
    {ZEL_CALL(zelBandGetFieldSkip(1)), kNo, kNo, 0, kNo, kNo, kNo},
    {ZEL_CALL(zelBandSetFieldTrack(1, 1)), kNo, kNo, 1, kNo, kNo, kNo},
    {ZEL_CALL(zelBandGetFieldTrack(1)), kNo, kNo, 0, kNo, kNo, kNo},
    {ZEL_CALL(zelBandSetFieldMagField(1, 1)), kNo, kNo, 1, kNo, kNo, kNo},
    {ZEL_CALL(zelBandGetFieldMagField(1)), kNo, kNo, 0, kNo, kNo, kNo},
    {ZEL_CALL(zelBandSetFieldOffset(1, 1)), kNo, kNo, 1, kNo, kNo, kNo},
    {ZEL_CALL(zelBandGetFieldOffset(1)), kNo, kNo, 0, kNo, kNo, kNo},
    {ZEL_CALL(zelBandSetFieldLength(1, 1)), kNo, kNo, 1, kNo, kNo, kNo},
    {ZEL_CALL(zelBandGetFieldLength(1)), kNo, kNo, 0, kNo, kNo, kNo},
    {ZEL_CALL(zelBandSetFieldTerm(1, 1)), kNo, kNo, 1, kNo, kNo, kNo},
    {ZEL_CALL(zelBandGetFieldTerm(1)), kNo, kNo, 0, kNo, kNo, kNo},
    {ZEL_CALL(zelBandSetFieldShowSepSen(1, 1)), kNo, kNo, 1, kNo, kNo, kNo},
    {ZEL_CALL(zelBandGetFieldShowSepSen(1)), kNo, kNo, 0, kNo, kNo, kNo},
    {ZEL_CALL(zelBandSetFieldShowLRC(1, 1)), kNo, kNo, 1, kNo, kNo, kNo},
    {ZEL_CALL(zelBandGetFieldShowLRC(1)), kNo, kNo, 0, kNo, kNo, kNo},
    {ZEL_CALL(zelBandSetFieldIgnoreLRC(1, 1)), kNo, kNo, 1, kNo, kNo, kNo},
    {ZEL_CALL(zelBandGetFieldIgnoreLRC(1)), kNo, kNo, 0, kNo, kNo, kNo},
    {ZEL_CALL(zelBandSetFieldKeyCount(1, 1)), kNo, kNo, 1, kNo, kNo, kNo},
    {ZEL_CALL(zelBandGetFieldKeyCount(1)), kNo, kNo, 0, kNo, kNo, kNo},
    {ZEL_CALL(zelBandSetFieldKeydata(1, 1, 1)), kNo, kNo, 1, kNo, kNo, kNo},
    {ZEL_CALL(zelBandGetFieldKeydata(1, 1)), kNo, kNo, 0, kNo, kNo, kNo},
};

inline constexpr Row kBandOtherRows[] = {
    {ZEL_CALL(zelBandSetLED(1, 1)), kNo, kNo, 0, kNo, kNo, kNo},
    {ZEL_CALL(zelBandGetLED(1)), kNo, kNo, 0, kNo, kNo, kNo},
    {ZEL_CALL(zelBandSetBeeper(1, 1, 1)), kNo, kNo, 0, kNo, kNo, kNo},
    {ZEL_CALL(zelBandGetBeeper(1)), kNo, kNo, 0, kNo, kNo, kNo},
    {ZEL_CALL(zelBandGetSystemUptime()), kNo, kNo, 0, kNo, kNo, kNo},
    {ZEL_CALL(zelBandGetSystemCardsRead()), kNo, kNo, 0, kNo, kNo, kNo},
    {ZEL_CALL(zelBandGetSystemInternalCount(1)), kNo, kNo, 0, kNo, kNo, kNo},
};

} // namespace zel::test
