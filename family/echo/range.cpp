// SPDX-License-Identifier: MIT
// What the sensor sees, and whether it sends keys.
#include "family/echo/blocks.h"
#include "family/echo/echo.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

using namespace zel;
using echo::command;
using echo::Opcode;
using echo::Payload;

namespace {

constexpr std::uint64_t kHaltFailed = 0x2000000; // bit of lLastCnctErr

std::int16_t bitOf(int status, int bit) { return static_cast<std::int16_t>(status >> bit & 1); }

} // namespace

// A query that fails leaves zeros.
int zelecho_GetObjRangeInfo(sRangeInfo* record) {
    tsDevDat& device = activeRecord();
    device.lLastErr = 0;
    if (!record)
        return 0;
    *record = {};
    Payload reply;
    if (!echo::query(command(Opcode::Range), reply)) {
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
    const Opcode opcode = halt != 0 ? Opcode::Halt : Opcode::Go;
    lLastCnctErr = 0;
    activeRecord().Echo.bEchoHalt = static_cast<std::uint32_t>(opcode);
    if (echo::send(command(opcode)))
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
