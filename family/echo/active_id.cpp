// SPDX-License-Identifier: MIT
// What a sensor tells in place of an identifier; the other calls on cards find nothing here.
#include "family/echo/echo.h"
#include "frame/zelTagAPI.h"

#include <cstdint>
#include <cstring>

namespace {

constexpr int kIdSize = 4;

void put(unsigned char* buffer, int place, int value) {
    buffer[place] = static_cast<unsigned char>(value);
}

} // namespace

// Four bytes: whether somebody is there, the distance, the LUID. Whether the sensor answered isn't
// looked at, and the result doesn't depend on the size.
int zelecho_GetActiveID(unsigned char* buffer, short size) {
    if (!buffer || size < 1)
        return kIdSize;
    sRangeInfo seen = {};
    zelecho_GetObjRangeInfo(&seen);
    put(buffer, 0, seen.bRangeStat0);
    if (size >= 2)
        put(buffer, 1, seen.iObjDist);
    if (size < kIdSize)
        return kIdSize;
    put(buffer, 2, GetLUID());
    put(buffer, 3, GetLUID() >> 8);
    std::memset(buffer + kIdSize, 0, static_cast<std::size_t>(size - kIdSize));
    return kIdSize;
}

int zelecho_GetActiveID32(unsigned char* buffer, short size) {
    return zelecho_GetActiveID(buffer, size);
}

// A sensor has no cards and no times of keys.
int zelecho_getActiveID(short) { return 0; }
int zelecho_getActiveID32(short) { return 0; }
int zelecho_getActiveID_byte(short) { return 0; }
int zelecho_SetRawPayload_index(short, short) { return 0; }
int zelecho_GetRawPayload_index(short) { return 0; }
int zelecho_GetQueuedID(short, short) { return 0; }
std::int64_t zelecho_GetQueuedID_index(short) { return 0; }
int zelecho_GetTimeParms(sTimeParms*) { return 0; }
int zelecho_SetTimeParms(sTimeParms*) { return 0; }
