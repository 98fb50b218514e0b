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
    require(zelecho_GetActiveID(id, size) == 4);
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

int run(int operation) {
    switch (operation) {
    case 0:
        return readRange();
    case 1:
        return readId(40);
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
        return zelecho_HaltKBSends(1);
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const int operation = input.byte() % 8;
    const tsDevDat& record = plugAnyReader(4, input);
    const int result = run(operation);
    require(result == 0 || result == 1);
    require(record.Echo.reserved[0] == 0 && record.iProduct == 4);
    return 0;
}
