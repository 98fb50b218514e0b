// SPDX-License-Identifier: MIT
// A sensor that answers anything. An input is the operation, then its answers.
#include "family/echo/blocks.h"
#include "family/echo/echo.h"
#include "fuzz/support/any_reader.h"

#include <cstring>

using namespace zel::fuzz;

namespace {

constexpr unsigned char kCanary = 0x5A;

int readRange() {
    sRangeInfo seen = {};
    const int result = zelecho_GetObjRangeInfo(&seen);
    require(seen.iObjDist >= 0 && seen.iObjDist <= 74);
    return result;
}

int readId(short size) {
    unsigned char id[41];
    std::memset(id, kCanary, sizeof id);
    require(zelecho_GetActiveID32(id, size) == 4 && zelecho_GetActiveID(nullptr, size) == 4);
    require(id[size] == kCanary);
    return 1;
}

int writeAll() {
    tsEcho& settings = DevDat[0].Echo;
    settings.bDirtySonar = settings.bDirtyWalkAway = settings.bDirtyWalkUp = 1;
    settings.bDirtyIdle = DevDat[0].bLUIDDirty = 1;
    return zelecho_WriteCfg();
}

// What was read and settled passes the strict checks.
int readAll() {
    const int result = zelecho_ReadCfg();
    tsEcho& settings = DevDat[0].Echo;
    require(settings.bEchoCfgValid == 0 || CheckSonarParms(&settings.sSonarParms, 0));
    return result;
}

int halt() {
    sCfgFlags flags = {};
    require(zelecho_GetFlags(nullptr) == 0 && zelecho_SetFlags(nullptr) == 0);
    require(zelecho_GetObjRangeInfo(nullptr) == 0);
    zelecho_SetFlags(&flags);
    zelecho_GetFlags(&flags);
    return zelecho_HaltKBSends(0) & zelecho_HaltKBSends(1);
}

int run(int operation) {
    switch (operation) {
    case 0:
        return readRange();
    case 1:
        return readId(40) & readId(3) & readId(1) & readId(0);
    case 2:
        return readAll();
    case 3:
        return writeAll();
    case 4:
        return zelecho_ResetFactoryDflts();
    case 5:
        return zelecho_ResetUserDflts();
    case 6:
        return zelecho_SaveUserDflts();
    default:
        return halt();
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::uint8_t way = input.byte();
    const tsDevDat& record = plugAnyReader(4, input);
    if ((way & 0x80) != 0)
        failFirstSend();
    const int result = run(way % 8);
    require(result == 0 || result == 1);
    require(record.Echo.reserved[0] == 0 && record.iProduct == 4);
    return 0;
}
