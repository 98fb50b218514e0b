// SPDX-License-Identifier: MIT
// What the sensor sees, and whether it sends keys.
#include "family/echo/blocks.h"
#include "family/echo/echo.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

#include <cstring>

using namespace zel;
using echo::command;
using echo::Command;
using echo::Payload;

namespace {

constexpr std::uint64_t kHaltFailed = 0x2000000; // bit of lLastCnctErr
constexpr int kReportSize = 4;

std::int16_t bitOf(int status, int bit) { return static_cast<std::int16_t>(status >> bit & 1); }

void put(unsigned char* buffer, int place, int value) {
    buffer[place] = static_cast<unsigned char>(value);
}

} // namespace

// A query that fails leaves zeros.
int zelecho_GetObjRangeInfo(sRangeInfo* record) {
    tsDevDat& device = activeRecord();
    device.lLastErr = 0;
    if (!record)
        return 0;
    *record = {};
    Payload reply;
    if (!echo::query(command(Command::Range), reply)) {
        device.lLastErr |= ZELTAGAPI_ERR_SERVICE;
        return 0;
    }
    const int status = reply[0];
    *record = {static_cast<std::int16_t>(echo::inchesOf(reply[1])), bitOf(status, 0),
               bitOf(status, 1), bitOf(status, 2), static_cast<std::int16_t>(status)};
    return 1;
}

// The answer isn't waited for: there is none.
int zelecho_HaltKBSends(int halt) {
    const Command code = halt != 0 ? Command::Halt : Command::Go;
    lLastCnctErr = 0;
    activeRecord().Echo.bEchoHalt = static_cast<std::uint32_t>(code);
    if (echo::send(command(code)))
        return 1;
    lLastCnctErr |= kHaltFailed;
    return 0;
}

int zelecho_GetFlags(sCfgFlags* record) {
    if (!record)
        return 0;
    record->bHaltKBSnd = static_cast<std::int16_t>(activeRecord().Echo.bEchoHalt);
    return 1;
}

int zelecho_SetFlags(sCfgFlags* record) {
    if (!record)
        return 0;
    HaltKBSends(record->bHaltKBSnd);
    return 1;
}

// Four bytes: whether somebody is there, the distance, the LUID. Whether the sensor answered isn't
// looked at, and the result doesn't depend on the size.
int zelecho_GetActiveID(unsigned char* buffer, short size) {
    if (!buffer || size < 1)
        return kReportSize;
    sRangeInfo seen = {};
    zelecho_GetObjRangeInfo(&seen);
    put(buffer, 0, seen.bRangeStat0);
    if (size >= 2)
        put(buffer, 1, seen.iObjDist);
    if (size < kReportSize)
        return kReportSize;
    put(buffer, 2, GetLUID());
    put(buffer, 3, GetLUID() >> 8);
    std::memset(buffer + kReportSize, 0, static_cast<std::size_t>(size - kReportSize));
    return kReportSize;
}

int zelecho_GetActiveID32(unsigned char* buffer, short size) {
    return zelecho_GetActiveID(buffer, size);
}

// A sensor has no cards, and no times of keys.
int zelecho_getActiveID(short) { return 0; }
int zelecho_getActiveID32(short) { return 0; }
int zelecho_getActiveID_byte(short) { return 0; }
int zelecho_SetRawPayload_index(short, short) { return 0; }
int zelecho_GetRawPayload_index(short) { return 0; }
int zelecho_GetQueuedID(short, short) { return 0; }
std::int64_t zelecho_GetQueuedID_index(short) { return 0; }
int zelecho_GetTimeParms(sTimeParms*) { return 0; }
int zelecho_SetTimeParms(sTimeParms*) { return 0; }
